#pragma once
// CWindowedFile: the system's read-only random-access file. Reads go through one window of
// 131072 bytes held in memory; a read outside it reloads the window, starting at the wanted
// byte when moving forward and half a window before it when moving backward. A byte read
// gives 0 to 255, or a negative value on failure, so that 0xFF is never taken for failure.
//
// The same class reads a whole file into a string with one read (ReadAll, LoadWhole).

#include <cstdint>

#include "platform/Files.h"
#include "text/TextString.h"

class CWindowedFile {
public:
    // Touches no file; a null name leaves `name` empty for Assign before Open.
    explicit CWindowedFile(const char* fileName);
    ~CWindowedFile();

    CWindowedFile(const CWindowedFile&) = delete;
    CWindowedFile& operator=(const CWindowedFile&) = delete;

    // Closes first. True when the file is open; an empty file opens, and its reads fail.
    // With wholeFile the file is read into memory and the handle closed at once.
    bool Open(bool wholeFile);
    // Frees the window and the image and closes the handle; false only when closing failed.
    bool Close();

    std::int16_t ReadByte(std::uint32_t offset);
    std::int16_t ReadByte(std::uint64_t offset);
    // n bytes into out. On failure out keeps the bytes read before it.
    bool Read(CTextString& out, std::uint32_t offset, std::uint32_t n);
    bool Read(CTextString& out, std::uint64_t offset, std::uint32_t n);
    // First byte most significant; the target is written only on success.
    bool ReadBigEndian16(std::uint16_t* value, std::uint32_t offset);
    bool ReadBigEndian16(std::uint16_t* value, std::uint64_t offset);
    bool ReadBigEndian32(std::uint32_t* value, std::uint64_t offset);

    // The file's size, asked of the file system by name. high may be null except in
    // whole-file mode.
    bool Size(std::uint32_t* low, std::uint32_t* high);
    // The whole file (below 4 GiB) into out; the file position is put back afterwards and
    // the window stays as it was.
    bool ReadAll(CTextString& out);
    // Opens path, reads it whole and closes it again.
    bool LoadWhole(const char* path, CTextString& out);

    CTextString name;   // the file's path, set before Open
    std::uint32_t LastError() const { return lastError; }
    std::uint64_t WindowStart() const { return windowStart; }
    std::uint64_t WindowLast() const { return windowLast; }

private:
    bool LoadWindow(std::uint64_t offset);
    std::int16_t WindowByte(std::uint64_t offset) const;
    std::int16_t ImageByte(std::uint64_t offset) const;
    void ForgetWindow();

    unsigned char* window;        // owned; null when closed
    std::uint32_t windowBytes;    // delivered by the last read into the window
    std::uint32_t windowSize;     // 131072, fixed
    std::uint64_t windowStart;    // all bits set when there is no window
    std::uint64_t windowLast;     // inclusive; 0 when there is no window
    FileHandle handle;
    std::uint32_t lastError;      // kept for inspection; no decision reads it
    CTextString image;            // the file's bytes in whole-file mode
    unsigned char inMemory;
};
