// The in-memory shell link stand-in: a store of link records keyed by wide path, objects
// with a reference for each of their two interfaces, failures on request, and a record of
// every call. See platform/model/ShellLinkModel.h.

#include "platform/model/ShellLinkModel.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "text/TextString.h"

// Both interfaces of one stand-in object point at the same record, as COM's do.
struct ShellLinkInterface {
    ShellLinkModel::LinkFile current;
    int references = 0;
};

namespace ShellLinkModel {
namespace {

struct Store {
    std::map<std::string, LinkFile> files;
    std::map<std::string, int> saves;
    std::map<Step, ShellResult> failures;
    std::vector<std::string> calls;
    int liveObjects = 0;
};

Store& TheStore()
{
    static Store store;
    return store;
}

std::string Key(const CTextString& widePath)
{
    return std::string(widePath.Text(), static_cast<std::size_t>(widePath.Length()));
}

// Low bytes of the units, the trailing zero dropped: how a wide path reads in a call line.
std::string Shown(const std::string& widePath)
{
    std::string shown;
    for (std::size_t i = 0; i < widePath.size() && widePath[i] != 0; i += 2)
        shown += widePath[i];
    return shown;
}

// Records the call; true when the step is to fail, with *result set to what it answers.
bool Record(Step step, const std::string& line, ShellResult* result)
{
    Store& store = TheStore();
    store.calls.push_back(line);
    auto failure = store.failures.find(step);
    if (failure == store.failures.end())
        return false;
    *result = failure->second;
    return true;
}

ShellResult Give(const std::string& text, char* buffer, int capacity)
{
    if (capacity <= 0)
        return Failed;
    const std::size_t n = std::min(text.size(), static_cast<std::size_t>(capacity - 1));
    std::memcpy(buffer, text.data(), n);
    buffer[n] = 0;
    return ShellOk;
}

ShellLinkInterface* ObjectOf(PersistFileInterface* file)
{
    return reinterpret_cast<ShellLinkInterface*>(file);
}

void Drop(ShellLinkInterface* object)
{
    if (--object->references == 0) {
        --TheStore().liveObjects;
        delete object;
    }
}

}   // namespace

bool LinkFile::operator==(const LinkFile& other) const
{
    return path == other.path && arguments == other.arguments && workDir == other.workDir &&
           iconPath == other.iconPath && iconIndex == other.iconIndex && description == other.description;
}

void Reset()
{
    Store& store = TheStore();
    store.files.clear();
    store.saves.clear();
    store.failures.clear();
    store.calls.clear();
}

std::string Wide(const std::string& path)
{
    std::string wide;
    for (char ch : path) {
        wide += ch;
        wide += '\0';
    }
    wide += '\0';
    return wide;
}

void PutFile(const std::string& widePath, const LinkFile& file) { TheStore().files[widePath] = file; }

bool HasFile(const std::string& widePath) { return TheStore().files.count(widePath) != 0; }

LinkFile GetFile(const std::string& widePath)
{
    auto found = TheStore().files.find(widePath);
    return found == TheStore().files.end() ? LinkFile() : found->second;
}

int SaveCount(const std::string& widePath)
{
    auto found = TheStore().saves.find(widePath);
    return found == TheStore().saves.end() ? 0 : found->second;
}

void FailStep(Step step, ShellResult result) { TheStore().failures[step] = result; }

std::vector<std::string> Calls() { return TheStore().calls; }

int LiveObjects() { return TheStore().liveObjects; }

}   // namespace ShellLinkModel

using namespace ShellLinkModel;

ShellResult CreateShellLink(ShellLinkInterface** link)
{
    *link = nullptr;
    ShellResult result;
    if (Record(StepCreate, "Create", &result))
        return result;
    *link = new ShellLinkInterface;
    (*link)->references = 1;
    ++TheStore().liveObjects;
    return ShellOk;
}

ShellResult QueryPersistFile(ShellLinkInterface* link, PersistFileInterface** file)
{
    *file = nullptr;
    ShellResult result;
    if (Record(StepQueryPersistFile, "QueryPersistFile", &result))
        return result;
    ++link->references;
    *file = reinterpret_cast<PersistFileInterface*>(link);
    return ShellOk;
}

void ReleaseShellLink(ShellLinkInterface* link)
{
    TheStore().calls.push_back("ReleaseShellLink");
    Drop(link);
}

void ReleasePersistFile(PersistFileInterface* file)
{
    TheStore().calls.push_back("ReleasePersistFile");
    Drop(ObjectOf(file));
}

ShellResult LoadLinkFile(PersistFileInterface* file, const CTextString& widePath)
{
    const std::string key = Key(widePath);
    ShellResult result;
    if (Record(StepLoad, "Load " + Shown(key), &result))
        return result;
    auto found = TheStore().files.find(key);
    if (found == TheStore().files.end())
        return NotFound;
    ObjectOf(file)->current = found->second;
    return ShellOk;
}

ShellResult SaveLinkFile(PersistFileInterface* file, const CTextString& widePath)
{
    const std::string key = Key(widePath);
    ShellResult result;
    if (Record(StepSave, "Save " + Shown(key), &result))
        return result;
    TheStore().files[key] = ObjectOf(file)->current;
    ++TheStore().saves[key];
    return ShellOk;
}

ShellResult ResolveLink(ShellLinkInterface*, void* window)
{
    char line[40];
    std::snprintf(line, sizeof line, "Resolve %p", window);
    ShellResult result;
    if (Record(StepResolve, line, &result))
        return result;
    return ShellOk;
}

ShellResult GetLinkPath(ShellLinkInterface* link, char* buffer, int capacity)
{
    ShellResult result;
    if (Record(StepGetPath, "GetPath " + std::to_string(capacity), &result))
        return result;
    if (link->current.path.empty()) {
        Give("", buffer, capacity);
        return ShellFalse;
    }
    return Give(link->current.path, buffer, capacity);
}

ShellResult GetLinkArguments(ShellLinkInterface* link, char* buffer, int capacity)
{
    ShellResult result;
    if (Record(StepGetArguments, "GetArguments " + std::to_string(capacity), &result))
        return result;
    return Give(link->current.arguments, buffer, capacity);
}

ShellResult GetLinkIconLocation(ShellLinkInterface* link, char* buffer, int capacity, std::int32_t* index)
{
    ShellResult result;
    if (Record(StepGetIconLocation, "GetIconLocation " + std::to_string(capacity), &result))
        return result;
    *index = link->current.iconIndex;
    return Give(link->current.iconPath, buffer, capacity);
}

ShellResult GetLinkWorkingDirectory(ShellLinkInterface* link, char* buffer, int capacity)
{
    ShellResult result;
    if (Record(StepGetWorkingDirectory, "GetWorkingDirectory " + std::to_string(capacity), &result))
        return result;
    return Give(link->current.workDir, buffer, capacity);
}

ShellResult SetLinkPath(ShellLinkInterface* link, const char* path)
{
    ShellResult result;
    if (Record(StepSetPath, std::string("SetPath ") + path, &result))
        return result;
    link->current.path = path;
    return ShellOk;
}

ShellResult SetLinkWorkingDirectory(ShellLinkInterface* link, const char* folder)
{
    ShellResult result;
    if (Record(StepSetWorkingDirectory, std::string("SetWorkingDirectory ") + folder, &result))
        return result;
    link->current.workDir = folder;
    return ShellOk;
}

ShellResult SetLinkArguments(ShellLinkInterface* link, const char* arguments)
{
    ShellResult result;
    if (Record(StepSetArguments, std::string("SetArguments ") + arguments, &result))
        return result;
    link->current.arguments = arguments;
    return ShellOk;
}

ShellResult SetLinkIconLocation(ShellLinkInterface* link, const char* path, std::int32_t index)
{
    ShellResult result;
    if (Record(StepSetIconLocation, std::string("SetIconLocation ") + path + "," + std::to_string(index), &result))
        return result;
    link->current.iconPath = path;
    link->current.iconIndex = index;
    return ShellOk;
}
