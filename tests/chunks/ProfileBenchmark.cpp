// Benchmarks of the catalogue scan over large Profiles folders, and of reading the name of
// a profile whose name group stands behind 50 MiB of other groups. Not a test: run by hand
// from a Release build. Peak memory is reported as the process's maximum resident size.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "chunks/EventProfile.h"
#include "files/Paths.h"
#include "platform/Files.h"

namespace fs = std::filesystem;

namespace {

// A Windows path of a host path, as the platform layer takes it.
std::string WindowsPath(const fs::path& path)
{
    std::string text = "Z:" + path.string();
    for (char& ch : text)
        if (ch == '/')
            ch = '\\';
    return text;
}

double PeakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss);
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

fs::path MakeInstallation(int profiles, std::uint32_t filler)
{
    fs::path root = fs::temp_directory_path() / ("lw-bench-" + std::to_string(profiles) + "-" + std::to_string(filler));
    fs::remove_all(root);
    fs::create_directories(root / "Profiles");
    for (int i = 0; i < profiles; ++i)
        WriteProfile(root / "Profiles" / ("p" + std::to_string(i) + ".idprof"), "Profile " + std::to_string(i), filler);
    return root;
}

void BM_ListProfiles(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const fs::path root = MakeInstallation(count, 0);
    OverrideProgramPath(WindowsPath(root / "Linkwright.exe").c_str());
    CChain<CTextString> list;
    for (auto _ : state) {
        CEventProfile profile;
        profile.ListProfiles(list);
        benchmark::DoNotOptimize(list.Count());
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["names"] = list.Count();
    state.counters["peak_KiB"] = PeakKiB();
    OverrideProgramPath(nullptr);
    fs::remove_all(root);
}
BENCHMARK(BM_ListProfiles)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_NameBehind50MiB(benchmark::State& state)
{
    const fs::path root = MakeInstallation(1, 50u << 20);
    const CTextString path(WindowsPath(root / "Profiles" / "p0.idprof").c_str());
    CEventProfile profile;
    for (auto _ : state) {
        CTextString name = profile.ReadProfileName(path);
        benchmark::DoNotOptimize(name.Length());
    }
    state.counters["peak_KiB"] = PeakKiB();
    fs::remove_all(root);
}
BENCHMARK(BM_NameBehind50MiB)->Unit(benchmark::kMicrosecond);

}   // namespace

BENCHMARK_MAIN();
