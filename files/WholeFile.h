#pragma once
// A file of the program's own, written whole or not at all. The text goes to a temporary
// beside the file (its path with ".tmp" behind it); every write, the flush and the close are
// checked, and only then does the temporary move over the file in one step. On any failure
// the temporary is deleted and the file stays as it was. A temporary that a crash left behind
// is never read as the file, and the next write replaces it.

#include "text/TextString.h"

// False when the file could not be written whole; it is then as it was.
[[nodiscard]] bool WriteWholeFile(const CTextString& path, const CTextString& text);
