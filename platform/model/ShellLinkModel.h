#pragma once
// Test-facing side of the in-memory shell link stand-in (native build only).
//
// Shortcut "files" live in a store keyed by the bytes of their wide path form; the real
// file system is never touched. A link object starts empty, LoadLinkFile copies a stored
// file into it, the Set calls change the object only, SaveLinkFile copies the object into
// the store, and ReplaceLinkFile and DeleteLinkFile move and delete stored files. GetLinkPath
// of an object with an empty target answers ShellFalse, as the shell does for a link without
// a file-system target.
//
// A test fills the store, tells any one step to fail, and afterwards inspects the store; an
// object not given back by both its references is a leak for LeakSanitizer to report. Every
// step passes the native I/O seams too (platform/posix/IoFaults.h), saves, moves and deletes
// as writes. Each call is a line of the dialog model's log: the step's name, and for a Set
// call what it was given, e.g. "GetPath", "SetArguments x".

#include <cstdint>
#include <string>
#include <vector>

#include "platform/ShellLink.h"
#include "text/Faults.h"

namespace ShellLinkModel {

struct LinkFile {
    std::string path;          // target
    std::string arguments;
    std::string workDir;
    std::string iconPath;
    std::int32_t iconIndex = 0;
    std::string description;   // never set through the interface; shows what a save keeps
    bool operator==(const LinkFile& other) const;
};

enum Step {
    StepCreate, StepQueryPersistFile, StepLoad, StepResolve,
    StepGetPath, StepGetArguments, StepGetIconLocation, StepGetWorkingDirectory, StepGetDescription,
    StepSetPath, StepSetWorkingDirectory, StepSetArguments, StepSetIconLocation, StepSave, StepReplace, StepDelete,
};

const ShellResult Failed = static_cast<ShellResult>(0x80004005u);     // E_FAIL
const ShellResult NotFound = static_cast<ShellResult>(0x80070002u);   // a load of a missing file

// Forgets every file and failure. Objects still alive keep working.
void Reset();

// The wide path form of a single-byte path (each byte a unit, one zero byte behind).
std::string Wide(const std::string& path);

void PutFile(const std::string& widePath, const LinkFile& file);
// What the wide interface reads of a text of the stored file, where it holds characters the
// code page cannot: without one it reads the single-byte text widened. A Set call on a
// loaded object drops it; a save stores the object's.
void PutWide(const std::string& widePath, LinkText which, const std::u16string& units);
LinkFile GetFile(const std::string& widePath);   // an empty record when there is none
std::vector<std::string> FilePaths();           // the wide paths of the stored files

// From now until Reset, every call of step answers result instead of doing its work.
void FailStep(Step step, ShellResult result = Failed);
// The saves pass this seam too; one that it fails stores its texts shifted, as a shell's
// writer did with some shortcuts: the arguments where the working folder belongs, the icon
// file where the arguments belong, and the working folder where the icon file belongs.
CFaultSeam& Garbles();

}   // namespace ShellLinkModel
