#pragma once
// Shortcut files for the sample installation and the checks, written and read through the
// shell's own IShellLinkA and IPersistFile, so that what Linkwright is given is a real
// shortcut and what a check reads back is what the shell itself sees.
//
// Each call starts and ends COM on the calling thread by itself; nesting is harmless.

#include <windows.h>

#include <string>

namespace e2e {

struct ShortcutFacts {
    std::string target;
    std::string arguments;
    std::string workDir;
    std::string iconPath;   // empty on write: the shortcut names no icon of its own
    int iconIndex = 0;
    bool readOnly = false;  // write: set the file's read-only bit; read: whether it is set
};

// Writes linkPath (single-byte path) anew with the given facts. S_OK or the failing HRESULT.
[[nodiscard]] HRESULT WriteShortcut(const std::string& linkPath, const ShortcutFacts& facts);

// Reads linkPath without resolving it. S_OK or the failing HRESULT; facts are complete on S_OK.
[[nodiscard]] HRESULT ReadShortcut(const std::string& linkPath, ShortcutFacts* facts);

}  // namespace e2e
