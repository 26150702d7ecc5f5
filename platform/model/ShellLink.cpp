// The in-memory shell link stand-in: a store of link records keyed by wide path, objects
// with a reference for each of their two interfaces, and failures on request; every call goes
// into the dialog model's log. See platform/model/ShellLinkModel.h.

#include "platform/model/ShellLinkModel.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <tuple>

#include "platform/model/DialogModel.h"
#include "platform/posix/IoFaults.h"
#include "text/TextString.h"

// What a stored file and an object hold alike: the record, and what the wide interface reads
// of its texts by LinkText (empty: the single-byte text widened).
struct LinkContent {
    ShellLinkModel::LinkFile file;
    std::array<std::u16string, 4> wide;
};

// Both interfaces of one stand-in object point at the same record, as COM's do.
struct ShellLinkInterface {
    LinkContent current;
    int references = 0;
};

namespace ShellLinkModel {
namespace {

struct Store {
    std::map<std::string, LinkContent> files;
    std::map<Step, ShellResult> failures;
};

Store& TheStore()
{
    static Store store;   // outlives every test
    return store;
}

std::string Key(const CTextString& path) { return std::string(path.Text(), static_cast<std::size_t>(path.Length())); }

std::string& Field(LinkFile& file, LinkText which)
{
    std::string* fields[] = {&file.path, &file.arguments, &file.workDir, &file.iconPath};
    return *fields[which];
}

// Logs the call; what the step answers: a failure of the I/O seams or the one asked for, or
// ShellOk to do its work.
ShellResult Record(Step step, const std::string& line)
{
    DialogModel().calls.push_back(line);
    const bool writes = step == StepSave || step == StepReplace || step == StepDelete;
    if (!IoCalls().Passes() || (writes && !IoWrites().Passes()))
        return Failed;
    return TheStore().failures.count(step) ? TheStore().failures[step] : ShellOk;
}

// A text into a buffer of capacity bytes, terminator included when it fits: a longer text
// fills the buffer without one, as the shell used in the tests leaves it.
ShellResult Give(Step step, const char* name, const std::string& text, char* buffer, int capacity)
{
    if (const ShellResult failed = Record(step, name))
        return failed;
    std::memcpy(buffer, text.c_str(), std::min(text.size() + 1, static_cast<std::size_t>(capacity)));
    return ShellOk;
}

// A single-byte text set through the interface; its wide reading follows it again.
ShellResult Set(Step step, const char* name, ShellLinkInterface* link, LinkText which, const char* value)
{
    if (const ShellResult failed = Record(step, name + std::string(" ") + value))
        return failed;
    Field(link->current.file, which) = value;
    link->current.wide[which].clear();
    return ShellOk;
}

ShellLinkInterface* ObjectOf(PersistFileInterface* file) { return reinterpret_cast<ShellLinkInterface*>(file); }

void Drop(ShellLinkInterface* object, const char* call)
{
    DialogModel().calls.push_back(call);
    if (--object->references == 0)
        delete object;
}

}   // namespace

bool LinkFile::operator==(const LinkFile& other) const
{
    return std::tie(path, arguments, workDir, iconPath, iconIndex, description) ==
           std::tie(other.path, other.arguments, other.workDir, other.iconPath, other.iconIndex, other.description);
}

void Reset() { TheStore() = Store(); }

std::string Wide(const std::string& path)
{
    std::string wide;
    for (char ch : path)
        wide += std::string{ch, '\0'};
    return wide + '\0';
}

void PutFile(const std::string& widePath, const LinkFile& file) { TheStore().files[widePath].file = file; }

void PutWide(const std::string& path, LinkText which, const std::u16string& units)
{
    TheStore().files[path].wide[which] = units;
}

LinkFile GetFile(const std::string& widePath)
{
    const auto found = TheStore().files.find(widePath);
    return found == TheStore().files.end() ? LinkFile() : found->second.file;
}

std::vector<std::string> FilePaths()
{
    std::vector<std::string> paths;
    for (const auto& file : TheStore().files)
        paths.push_back(file.first);
    return paths;
}

void FailStep(Step step, ShellResult result) { TheStore().failures[step] = result; }

CFaultSeam& Garbles()
{
    static CFaultSeam seam;
    return seam;
}

}   // namespace ShellLinkModel

using namespace ShellLinkModel;

ShellResult CreateShellLink(ShellLinkInterface** link)
{
    *link = nullptr;
    if (const ShellResult failed = Record(StepCreate, "Create"))
        return failed;
    *link = new ShellLinkInterface{{}, 1};
    return ShellOk;
}

ShellResult QueryPersistFile(ShellLinkInterface* link, PersistFileInterface** file)
{
    *file = nullptr;
    if (const ShellResult failed = Record(StepQueryPersistFile, "QueryPersistFile"))
        return failed;
    ++link->references;
    *file = reinterpret_cast<PersistFileInterface*>(link);
    return ShellOk;
}

void ReleaseShellLink(ShellLinkInterface* link) { Drop(link, "ReleaseShellLink"); }

void ReleasePersistFile(PersistFileInterface* file) { Drop(ObjectOf(file), "ReleasePersistFile"); }

ShellResult LoadLinkFile(PersistFileInterface* file, const CTextString& widePath)
{
    const auto found = TheStore().files.find(Key(widePath));
    if (const ShellResult failed = Record(StepLoad, "Load"))
        return failed;
    if (found == TheStore().files.end())
        return NotFound;
    ObjectOf(file)->current = found->second;
    return ShellOk;
}

bool IsLinkFileMissing(ShellResult result) { return result == NotFound; }

ShellResult SaveLinkFile(PersistFileInterface* file, const CTextString& widePath)
{
    if (const ShellResult failed = Record(StepSave, "Save"))
        return failed;
    LinkContent saved = ObjectOf(file)->current;
    const LinkFile& f = saved.file;
    if (!Garbles().Passes())
        saved.file = {f.path, f.iconPath, f.arguments, f.workDir, f.iconIndex, f.description};
    TheStore().files[Key(widePath)] = saved;
    return ShellOk;
}

ShellResult ReplaceLinkFile(const CTextString& fromWidePath, const CTextString& toWidePath)
{
    Store& store = TheStore();
    if (const ShellResult failed = Record(StepReplace, "Replace"))
        return failed;
    const auto found = store.files.find(Key(fromWidePath));
    if (found == store.files.end())
        return NotFound;
    store.files[Key(toWidePath)] = found->second;
    store.files.erase(found);
    return ShellOk;
}

ShellResult DeleteLinkFile(const CTextString& widePath)
{
    if (const ShellResult failed = Record(StepDelete, "Delete"))
        return failed;
    return TheStore().files.erase(Key(widePath)) ? ShellOk : NotFound;
}

ShellResult ResolveLink(ShellLinkInterface*, void*) { return Record(StepResolve, "Resolve"); }

ShellResult GetLinkPath(ShellLinkInterface* link, char* buffer, int capacity)
{
    const ShellResult result = Give(StepGetPath, "GetPath", link->current.file.path, buffer, capacity);
    return result == ShellOk && link->current.file.path.empty() ? ShellFalse : result;
}

ShellResult GetLinkArguments(ShellLinkInterface* link, char* buffer, int capacity)
{
    return Give(StepGetArguments, "GetArguments", link->current.file.arguments, buffer, capacity);
}

ShellResult GetLinkIconLocation(ShellLinkInterface* link, char* buffer, int capacity, std::int32_t* index)
{
    const LinkFile& file = link->current.file;
    const ShellResult result = Give(StepGetIconLocation, "GetIconLocation", file.iconPath, buffer, capacity);
    if (result == ShellOk)
        *index = file.iconIndex;
    return result;
}

ShellResult GetLinkWorkingDirectory(ShellLinkInterface* link, char* buffer, int capacity)
{
    return Give(StepGetWorkingDirectory, "GetWorkingDirectory", link->current.file.workDir, buffer, capacity);
}

ShellResult GetLinkDescription(ShellLinkInterface* link, char* buffer, int capacity)
{
    return Give(StepGetDescription, "GetDescription", link->current.file.description, buffer, capacity);
}

// Not recorded among the calls: it reads what the single-byte reads already did.
ShellResult GetLinkTextWide(ShellLinkInterface* link, LinkText which, CTextString& wide)
{
    const std::u16string& units = link->current.wide[which];
    if (units.empty())
        return WidenByCodePage(CTextString(Field(link->current.file, which).c_str()), wide) ? ShellOk : Failed;
    wide.MakeEmpty();
    for (char16_t unit : units) {
        const char pair[2] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        wide.AppendBytes(pair, 2);
    }
    wide.AppendChar('\0');
    return wide.Length() == static_cast<int>(2 * units.size() + 1) ? ShellOk : Failed;
}

ShellResult SetLinkPath(ShellLinkInterface* link, const char* path)
{
    return Set(StepSetPath, "SetPath", link, LinkTextPath, path);
}

ShellResult SetLinkWorkingDirectory(ShellLinkInterface* link, const char* folder)
{
    return Set(StepSetWorkingDirectory, "SetWorkingDirectory", link, LinkTextWorkingDirectory, folder);
}

ShellResult SetLinkArguments(ShellLinkInterface* link, const char* arguments)
{
    return Set(StepSetArguments, "SetArguments", link, LinkTextArguments, arguments);
}

ShellResult SetLinkIconLocation(ShellLinkInterface* link, const char* path, std::int32_t index)
{
    const ShellResult result = Set(StepSetIconLocation, "SetIconLocation", link, LinkTextIconLocation, path);
    if (result == ShellOk)
        link->current.file.iconIndex = index;
    return result;
}
