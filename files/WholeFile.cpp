// Writing a file of the program's own through a temporary beside it.

#include "files/WholeFile.h"

#include "platform/Files.h"

bool WriteWholeFile(const CTextString& path, const CTextString& text)
{
    CTextString temporary(0);
    if (path.IsEmpty() || !AssignWhole(temporary, path) || !AppendWhole(temporary, ".tmp"))
        return false;
    const FileHandle file = CreateFileForWriting(temporary.Text());
    if (file == InvalidFileHandle)
        return false;
    const bool written = text.WriteToHandle(file) == text.Length() && FlushFile(file);
    if (CloseFile(file) && written && MoveFileOver(temporary.Text(), path.Text()))
        return true;
    (void)DeleteFileAt(temporary.Text());
    return false;
}
