// CWindowedFile: one window over a file, reloaded by offset.

#include "files/WindowedFile.h"

#include "files/Paths.h"
#include "text/Allocation.h"

namespace {

const std::uint32_t TheWindowSize = 0x20000;
const std::uint64_t NoWindowStart = ~static_cast<std::uint64_t>(0);

}  // namespace

CWindowedFile::CWindowedFile(const char* fileName)
    : name(0), window(nullptr), windowBytes(0), windowSize(TheWindowSize), windowStart(NoWindowStart),
      windowLast(0), handle(InvalidFileHandle), lastError(0), image(0), inMemory(0)
{
    if (fileName)
        name.Assign(fileName);
}

CWindowedFile::~CWindowedFile()
{
    Close();
}

void CWindowedFile::ForgetWindow()
{
    windowStart = NoWindowStart;
    windowLast = 0;
}

bool CWindowedFile::Open(bool wholeFile)
{
    Close();
    if (!window) {
        window = static_cast<unsigned char*>(AllocateBlock(windowSize));
        if (!window)
            return false;
    }
    lastError = 0;
    if (name.IsEmpty())
        return false;
    handle = OpenFileForReading(name.Text());
    if (handle == InvalidFileHandle)
        return false;

    if (wholeFile) {
        if (!ReadAll(image)) {
            Close();
            return false;
        }
        inMemory = 1;
        CloseFile(handle);
        handle = InvalidFileHandle;
        FreeBlock(window);
        window = nullptr;
        return true;
    }

    // The first window comes from the start of the file. A file that gives nothing here
    // still counts as open: its reads are what fail.
    windowStart = 0;
    std::uint32_t delivered = 0;
    if (ReadFromFile(handle, window, windowSize, &delivered) && delivered > 0) {
        windowBytes = delivered;
        windowLast = delivered - 1;
    } else {
        lastError = LastFileError();
        ForgetWindow();
    }
    return true;
}

bool CWindowedFile::Close()
{
    FreeBlock(window);
    window = nullptr;
    // The image gives its memory back down to the smallest allocation. Its bytes are not read
    // again before a whole-file Open reads them anew.
    (void)image.Reserve(MinimumCapacity, false, true);
    inMemory = 0;
    bool closed = true;
    if (handle != InvalidFileHandle) {
        if (CloseFile(handle)) {
            lastError = 0;
        } else {
            lastError = LastFileError();
            closed = false;
        }
        handle = InvalidFileHandle;
    }
    ForgetWindow();
    return closed;
}

std::int16_t CWindowedFile::WindowByte(std::uint64_t offset) const
{
    return static_cast<std::int16_t>(window[offset - windowStart]);
}

// Whole-file mode has no window: an offset beyond the image fails like one beyond a file.
std::int16_t CWindowedFile::ImageByte(std::uint64_t offset) const
{
    if (offset >= static_cast<std::uint64_t>(image.Length()))
        return -1;
    return static_cast<std::int16_t>(static_cast<unsigned char>(image.Text()[offset]));
}

std::int16_t CWindowedFile::ReadByte(std::uint32_t offset)
{
    if (inMemory)
        return ImageByte(offset);
    if (!window)
        return -1;
    // Only the low halves are compared, and the byte is found from them: this form serves
    // offsets near the start of a file. A window that straddles 4 GiB never hits here.
    const std::uint32_t startLow = static_cast<std::uint32_t>(windowStart);
    if (offset >= startLow && offset <= static_cast<std::uint32_t>(windowLast))
        return static_cast<std::int16_t>(window[offset - startLow]);
    if (!LoadWindow(offset))
        return -1;
    return WindowByte(offset);
}

std::int16_t CWindowedFile::ReadByte(std::uint64_t offset)
{
    if (inMemory)
        return ImageByte(offset);
    if (!window)
        return -1;
    if (offset >= windowStart && offset <= windowLast)
        return WindowByte(offset);
    if (!LoadWindow(offset))
        return -1;
    return WindowByte(offset);
}

bool CWindowedFile::LoadWindow(std::uint64_t offset)
{
    // Moving backwards puts the wanted byte in the middle of the window, so that a backward
    // scan reloads once per half window. Moving forwards starts the window at the byte.
    // With no window every offset counts as lying before it.
    std::uint64_t target = offset;
    if (offset < windowStart)
        target = offset > windowSize / 2 ? offset - windowSize / 2 : 0;

    if (!SeekFile(handle, static_cast<std::int64_t>(target), SeekFromStart, nullptr)) {
        lastError = LastFileError();
        return false;
    }
    std::uint32_t delivered = 0;
    if (!ReadFromFile(handle, window, windowSize, &delivered) || delivered == 0) {
        // The old window stays in force: offsets inside it still hit.
        lastError = LastFileError();
        return false;
    }
    windowBytes = delivered;
    windowStart = target;
    windowLast = target + delivered - 1;
    return offset <= windowLast;
}

bool CWindowedFile::Read(CTextString& out, std::uint32_t offset, std::uint32_t n)
{
    out.MakeEmpty();
    for (std::uint32_t i = 0; i < n; ++i) {
        const std::int16_t byte = ReadByte(static_cast<std::uint32_t>(offset + i));
        if (byte < 0)
            return false;
        out.AppendChar(static_cast<char>(byte));
        if (static_cast<std::uint32_t>(out.Length()) != i + 1)
            return false;   // no memory for the byte
    }
    return true;
}

// The bytes go over in runs: as much of the window (or the image) as lies from the offset
// on, then the window is reloaded at the next byte, as ReadByte would reload it.
bool CWindowedFile::Read(CTextString& out, std::uint64_t offset, std::uint32_t n)
{
    out.MakeEmpty();
    std::uint32_t done = 0;
    while (done < n) {
        const std::uint64_t at = offset + done;
        const unsigned char* run = nullptr;
        std::uint64_t available = 0;
        if (inMemory) {
            if (at >= static_cast<std::uint64_t>(image.Length()))
                return false;
            run = reinterpret_cast<const unsigned char*>(image.Text()) + at;
            available = static_cast<std::uint64_t>(image.Length()) - at;
        } else {
            if (!window)
                return false;
            if ((at < windowStart || at > windowLast) && !LoadWindow(at))
                return false;
            run = window + (at - windowStart);
            available = windowLast - at + 1;
        }
        const std::uint32_t take = available < n - done ? static_cast<std::uint32_t>(available) : n - done;
        const int before = out.Length();
        out.AppendBytes(run, static_cast<int>(take));
        if (out.Length() != before + static_cast<int>(take))
            return false;   // no memory for the run
        done += take;
    }
    return true;
}

// The bytes are taken one by one into a local array: no string is built for them.
bool CWindowedFile::ReadBigEndian16(std::uint16_t* value, std::uint32_t offset)
{
    std::int16_t b[2];
    for (std::uint32_t i = 0; i < 2; ++i) {
        b[i] = ReadByte(static_cast<std::uint32_t>(offset + i));
        if (b[i] < 0)
            return false;
    }
    *value = static_cast<std::uint16_t>(b[0] << 8 | b[1]);
    return true;
}

bool CWindowedFile::ReadBigEndian16(std::uint16_t* value, std::uint64_t offset)
{
    std::int16_t b[2];
    for (std::uint32_t i = 0; i < 2; ++i) {
        b[i] = ReadByte(offset + i);
        if (b[i] < 0)
            return false;
    }
    *value = static_cast<std::uint16_t>(b[0] << 8 | b[1]);
    return true;
}

bool CWindowedFile::ReadBigEndian32(std::uint32_t* value, std::uint64_t offset)
{
    std::uint32_t result = 0;
    for (std::uint32_t i = 0; i < 4; ++i) {
        const std::int16_t byte = ReadByte(offset + i);
        if (byte < 0)
            return false;
        result = result << 8 | static_cast<std::uint32_t>(byte);
    }
    *value = result;
    return true;
}

bool CWindowedFile::Size(std::uint32_t* low, std::uint32_t* high)
{
    if (inMemory) {
        *low = static_cast<std::uint32_t>(image.Length());
        *high = 0;
        return true;
    }
    std::uint64_t size = 0;
    if (!GetFileSize64(name.Text(), &size))
        return false;
    *low = static_cast<std::uint32_t>(size);
    if (high)
        *high = static_cast<std::uint32_t>(size >> 32);
    return true;
}

bool CWindowedFile::ReadAll(CTextString& out)
{
    if (handle == InvalidFileHandle)
        return false;
    std::uint32_t size = 0;
    if (!Size(&size, nullptr))
        return false;
    std::uint64_t position = 0;
    if (!SeekFile(handle, 0, SeekFromCurrent, &position) || !SeekFile(handle, 0, SeekFromStart, nullptr)) {
        lastError = LastFileError();
        return false;
    }
    const bool read = out.ReadFromHandle(handle, size) >= 0;
    if (!read)
        lastError = LastFileError();
    SeekFile(handle, static_cast<std::int64_t>(position), SeekFromStart, nullptr);
    return read;
}

bool CWindowedFile::LoadWhole(const char* path, CTextString& out)
{
    name.Assign(path);
    if (!Open(false))
        return false;
    const bool read = ReadAll(out);
    Close();
    return read;
}
