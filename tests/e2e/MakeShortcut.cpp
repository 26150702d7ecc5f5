// make_shortcut: writes one shortcut file through the shell, for the sample installation and
// for checks run by hand. Paths are Windows paths as the program under Wine sees them.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/e2e/ShellLinkFile.h"

namespace {

int Usage()
{
    std::fprintf(stderr,
                 "usage: make_shortcut LINK TARGET [-args TEXT] [-dir FOLDER] [-icon FILE [-index N]] [-readonly]\n"
                 "  Writes the shortcut LINK to TARGET. Without -icon the shortcut names no icon of its own.\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return Usage();
    const std::string link = argv[1];
    e2e::ShortcutFacts facts;
    facts.target = argv[2];
    for (int i = 3; i < argc; ++i) {
        const bool hasValue = i + 1 < argc;
        if (std::strcmp(argv[i], "-readonly") == 0)
            facts.readOnly = true;
        else if (std::strcmp(argv[i], "-args") == 0 && hasValue)
            facts.arguments = argv[++i];
        else if (std::strcmp(argv[i], "-dir") == 0 && hasValue)
            facts.workDir = argv[++i];
        else if (std::strcmp(argv[i], "-icon") == 0 && hasValue)
            facts.iconPath = argv[++i];
        else if (std::strcmp(argv[i], "-index") == 0 && hasValue)
            facts.iconIndex = std::atoi(argv[++i]);
        else
            return Usage();
    }
    const HRESULT hr = e2e::WriteShortcut(link, facts);
    if (FAILED(hr)) {
        std::fprintf(stderr, "make_shortcut: could not write %s (0x%08lx)\n", link.c_str(),
                     static_cast<unsigned long>(hr));
        return 1;
    }
    return 0;
}
