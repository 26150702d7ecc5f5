// The catalogue scan over large Profiles folders, and reading the name of a profile whose
// name group stands behind 50 MiB of other groups, each beside its bare baseline: a loop
// through the platform layer that makes the same system calls on the same files and does
// nothing else. Run by bench/run-benchmarks.sh, which alternates the sides over several
// rounds and reports the ratios.
//
// Besides the time, every run measures once, untimed, how far one pass raises the peak
// resident memory above what the process held just before it (counter grown_KiB), and how
// much of that the pass's result still holds (held_KiB): the catalogue of names.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "chunks/EventProfile.h"
#include "files/Paths.h"
#include "platform/Files.h"
#include "text/Allocation.h"

namespace fs = std::filesystem;

namespace {

const std::uint32_t WindowBytes = 0x20000;   // what the bare loop reads of each file

// A Windows path of a host path, as the platform layer takes it.
std::string WindowsPath(const fs::path& path)
{
    std::string text = "Z:" + path.string();
    for (char& ch : text)
        if (ch == '/')
            ch = '\\';
    return text;
}

// A line of /proc/self/status in KiB, e.g. "VmRSS:".
double StatusKiB(const char* key)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, std::strlen(key), key) == 0)
            return std::stod(line.substr(std::strlen(key)));
    }
    return -1;
}

// How many KiB one call of pass raises the peak resident size above the resident size just
// before it (grown_KiB), and how many it still holds when it has returned (held_KiB). Free
// heap memory is given back first and the kernel's peak is reset, so that what earlier
// passes left behind is not counted for this one.
template <class Pass>
void MeasureResident(benchmark::State& state, Pass pass)
{
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    const double before = StatusKiB("VmRSS:");
    pass();
    state.counters["grown_KiB"] = StatusKiB("VmHWM:") - before;
    state.counters["held_KiB"] = StatusKiB("VmRSS:") - before;
}

void WriteProfile(const fs::path& path, const std::string& name, std::uint32_t filler)
{
    CEventProfile profile;
    profile.BeginFile(WindowsPath(path).c_str());
    if (filler > 0) {
        std::string zeros(1 << 20, '\0');
        profile.OpenGroup(7);
        for (std::uint32_t left = filler; left > 0;) {
            const std::uint32_t n = left < zeros.size() ? left : static_cast<std::uint32_t>(zeros.size());
            profile.WriteLeaf(zeros.data(), n);
            left -= n;
        }
        profile.CloseGroup();
    }
    profile.OpenGroup(CEventProfile::TypeGroupId);
    profile.WriteLeaf(CTextString("EventProfile"));
    profile.CloseGroup();
    profile.OpenGroup(CEventProfile::NameGroupId);
    profile.WriteLeaf(CTextString(name.c_str()));
    profile.Close();
}

// One installation per size, made on first use and removed at the end of the run.
std::map<std::string, fs::path> g_installations;

const fs::path& Installation(int profiles, std::uint32_t filler)
{
    const std::string key = std::to_string(profiles) + "-" + std::to_string(filler);
    auto found = g_installations.find(key);
    if (found != g_installations.end())
        return found->second;
    fs::path root = fs::temp_directory_path() / ("lw-bench-" + key);
    fs::remove_all(root);
    fs::create_directories(root / "Profiles");
    for (int i = 0; i < profiles; ++i)
        WriteProfile(root / "Profiles" / ("p" + std::to_string(i) + ".idprof"), "Profile " + std::to_string(i), filler);
    return g_installations.emplace(key, root).first->second;
}

// The bare loop: every *.idprof of the folder opened, its first 128 KiB read, closed.
int BarePass(const std::string& folder, unsigned char* buffer)
{
    const std::string pattern = folder + "\\*.idprof";
    FindData data;
    const FindHandle search = FindFirst(pattern.c_str(), &data);
    if (search == InvalidFindHandle)
        return 0;
    int files = 0;
    char path[PathBufferSize * 2];
    do {
        if (data.attributes & AttributeDirectory)
            continue;
        std::snprintf(path, sizeof path, "%s\\%s", folder.c_str(), data.name);
        const FileHandle file = OpenFileForReading(path);
        if (file == InvalidFileHandle)
            continue;
        std::uint32_t delivered = 0;
        if (ReadFromFile(file, buffer, WindowBytes, &delivered) && delivered > 0)
            ++files;
        CloseFile(file);
    } while (FindNext(search, &data));
    FindEnd(search);
    return files;
}

void BM_BareScan(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const std::string folder = WindowsPath(Installation(count, 0) / "Profiles");
    unsigned char* buffer = static_cast<unsigned char*>(AllocateBlock(WindowBytes));
    int files = 0;
    MeasureResident(state, [&] { files = BarePass(folder, buffer); });
    for (auto _ : state)
        benchmark::DoNotOptimize(files = BarePass(folder, buffer));
    FreeBlock(buffer);
    state.counters["files"] = files;
}

void BM_CatalogueScan(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    OverrideProgramPath(WindowsPath(Installation(count, 0) / "Linkwright.exe").c_str());
    int names = 0;
    const auto pass = [&](CChain<CTextString>& list) {
        CEventProfile profile;
        profile.ListProfiles(list);
        names = list.Count();
    };
    {
        // The catalogue that the scan makes is held when the pass has returned, as the
        // dialog holds it.
        CChain<CTextString> catalogue;
        MeasureResident(state, [&] { pass(catalogue); });
    }
    for (auto _ : state) {
        CChain<CTextString> list;
        pass(list);
    }
    state.counters["files"] = names;
    OverrideProgramPath(nullptr);
}

// The bare side of the name read: the calls the window makes for this file, nothing else.
// The file is opened and its start read (the signature, the root and the filler group's
// header), then the window moves to the filler's end, where the type and name groups are.
void BM_BareNameBehind50MiB(benchmark::State& state)
{
    const std::uint32_t filler = 50u << 20;
    const std::string path = WindowsPath(Installation(1, filler) / "Profiles" / "p0.idprof");
    unsigned char* buffer = static_cast<unsigned char*>(AllocateBlock(WindowBytes));
    std::uint64_t fileSize = 0;
    GetFileSize64(path.c_str(), &fileSize);
    for (auto _ : state) {
        const FileHandle file = OpenFileForReading(path.c_str());
        std::uint32_t delivered = 0;
        ReadFromFile(file, buffer, WindowBytes, &delivered);
        SeekFile(file, static_cast<std::int64_t>(fileSize) - 64, SeekFromStart, nullptr);
        ReadFromFile(file, buffer, WindowBytes, &delivered);
        CloseFile(file);
        benchmark::DoNotOptimize(delivered);
    }
    FreeBlock(buffer);
}

void BM_NameBehind50MiB(benchmark::State& state)
{
    const CTextString path(WindowsPath(Installation(1, 50u << 20) / "Profiles" / "p0.idprof").c_str());
    CEventProfile profile;
    for (auto _ : state) {
        CTextString name = profile.ReadProfileName(path);
        benchmark::DoNotOptimize(name.Length());
    }
}

double Smallest(const std::vector<double>& values)
{
    return *std::min_element(values.begin(), values.end());
}

double Largest(const std::vector<double>& values)
{
    return *std::max_element(values.begin(), values.end());
}

// Each side is registered next to its baseline; repetitions are interleaved at random by
// the run's flags, so that both sides meet the same noise of the machine.
void Register()
{
    for (int count : {1000, 10000}) {
        for (auto* bench : {benchmark::RegisterBenchmark("BareScan", BM_BareScan),
                            benchmark::RegisterBenchmark("CatalogueScan", BM_CatalogueScan)})
            bench->Arg(count)->Unit(benchmark::kMillisecond)
                ->ComputeStatistics("min", Smallest)->ComputeStatistics("max", Largest);
    }
    for (auto* bench : {benchmark::RegisterBenchmark("BareNameBehind50MiB", BM_BareNameBehind50MiB),
                        benchmark::RegisterBenchmark("NameBehind50MiB", BM_NameBehind50MiB)})
        bench->Unit(benchmark::kMicrosecond)
            ->ComputeStatistics("min", Smallest)->ComputeStatistics("max", Largest);
}

}   // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Register();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    for (const auto& installation : g_installations)
        fs::remove_all(installation.second);
    return 0;
}
