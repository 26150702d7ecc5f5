// The road of a shortcut and a restore-all run with faults: every allocation, every file call
// and link step failed once in turn, a save the shell garbles, and a crash after every write.
// After each step the disk and the link store hold what Linkwright promises:
//   (a) every shortcut left enhanced is named in ShortcutList, so no entry went while its
//       shortcut was still enhanced;
//   (c) ShortcutList is whole: entries as they were written, no cut tail;
//   (d) each shortcut is as it was, wholly enhanced or wholly restored;
// a step of the road that a fault stopped has told the user (restore-all tells nobody);
// nothing is written outside the program's folder, no link file but the shortcuts and their
// temporaries ("<name>.lw.tmp"), and no file is left open. Crashes and leaks are the sanitizers'.

#include "AppFixture.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <regex>
#include <set>

#include "platform/posix/IoFaults.h"
#include "tests/chunks/ChunkBytes.h"
#include "text/Allocation.h"

namespace {

namespace fs = std::filesystem;
using ShellLinkModel::LinkFile;
using ShellLinkModel::Wide;
using State = std::map<std::string, std::string>;

const char Race[] = "C:\\Links\\Race.lnk";     // plain; the road enhances and restores it
const char Other[] = "C:\\Links\\Other.lnk";   // enhanced and listed; restore-all puts it back
const char Odd[] = "C:\\Links\\Odd.lnk";       // enhanced and listed, with a line no restore can write
const LinkFile OddFile = {"C:\\Zelmar.exe", "profile=\"?\" target=\"C:\\x.exe\"", "", "", 0, ""};
const LinkFile Game = {"C:\\Games\\race.exe", "-f \"a b\"", "C:\\Games", "C:\\Games\\race.ico", 2, "kept"};
const LinkFile Sim = {"C:\\Sim\\sim.exe", "", "", "C:\\Sim\\sim.exe", 0, "own"};
// The shortcuts as the link store keys them, with the temporaries beside them.
const std::set<std::string> Shortcuts = {Wide(Race), Wide(Other), Wide(Odd), Wide(Race + std::string(".lw.tmp")),
                                         Wide(Other + std::string(".lw.tmp"))};
const char* const Listed[] = {Odd, Other, Race};   // in the order of ShortcutList, sorted
// Where a path cut short would have put a list file: the drive's root and the current folder.
const char* const StrayPlaces[] = {"/ShortcutList", "/ShortcutList.txt", "ShortcutList", "ShortcutList.txt"};

// A seam of the system: how to fail its nth call from now, and how many calls it has seen.
struct Seam {
    const char* name;
    std::function<void(long)> failAt;
    std::function<long()> made;
};

class FaultSweep : public AppFixture {
protected:
    // A fresh installation: two profiles, quote characters, Other and Odd listed and enhanced.
    void Prepare()
    {
        for (const auto& entry : fs::directory_iterator("P"))
            fs::remove_all(entry.path());
        WriteProgramFile("Zelmar.exe", "MZ");
        WriteProgramFile("Profiles/a.idprof", Profile("Wheel"));
        WriteProgramFile("Profiles/b.idprof", Profile("Yoke"));
        WriteProgramFile("ShortcutList", Wide(Odd) + Wide(Other));
        WriteProgramFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n");
        ResetModels();
        ShellLinkModel::PutFile(Wide(Race), Game);
        ShellLinkModel::PutFile(Wide(Odd), OddFile);
        ShellLinkModel::PutWide(Wide(Odd), LinkTextArguments, u"profile=\"\u03A9\" target=\"C:\\x.exe\"");
        ShellLinkModel::PutFile(Wide(Other), {ProgramPath("Zelmar.exe"), "profile=\"Wheel\" target=\"C:\\Sim\\sim.exe\"",
                                              programFolder, Sim.iconPath, 0, Sim.description});
    }

    // The files of the installation folder and both shortcuts.
    State Capture() const
    {
        State state;
        for (const auto& entry : fs::recursive_directory_iterator("P"))
            state[entry.path()] = entry.is_regular_file() ? ReadProgramFile(fs::relative(entry.path(), "P")) : "";
        for (const char* link : {Race, Other}) {
            const LinkFile f = ShellLinkModel::GetFile(Wide(link));
            state[link] = f.path + '|' + f.arguments + '|' + f.workDir + '|' + f.iconPath + '|' + f.description;
        }
        return state;
    }

    // The promises broken now, a bit each: 1 (a), 2 (c), 4 (d). ShortcutList can only be
    // missing, or hold some of Odd, Other and Race in that order.
    int Broken() const
    {
        const std::string list = ReadProgramFile("ShortcutList");
        std::map<std::string, std::string> lists = {{"(none)", ""}};
        for (int some = 0; some < 8; ++some) {
            std::string bytes, names;
            for (int i = 0; i < 3; ++i)
                if (some >> i & 1)
                    bytes += Wide(Listed[i]), names += Listed[i];
            lists[bytes] = names;
        }
        int broken = lists.count(list) ? 0 : 2;
        broken |= !lists.count(list) || lists.at(list).find(Odd) == std::string::npos ? 1 : 0;   // Odd stays enhanced
        broken |= ShellLinkModel::GetFile(Wide(Odd)) == OddFile ? 0 : 4;
        const std::tuple<const char*, LinkFile, std::string> links[] = {
            {Race, Game, " target=\"C:\\Games\\race.exe\" targetDir=\"C:\\Games\" args=\"-f {a b}\""},
            {Other, Sim, " target=\"C:\\Sim\\sim.exe\""}};
        for (const auto& [link, plain, tail] : links) {
            const LinkFile f = ShellLinkModel::GetFile(Wide(link));
            const LinkFile enhanced = {ProgramPath("Zelmar.exe"), f.arguments, programFolder, plain.iconPath, plain.iconIndex,
                                       plain.description};
            const std::size_t cut = f.arguments.size() - std::min(f.arguments.size(), tail.size());
            static const std::regex profiles("(profile=\"[^\"]*\" )*profile=\"[^\"]*\"");
            const bool listed = lists.count(list) && lists.at(list).find(link) != std::string::npos;
            broken |= (f.path == enhanced.path && !listed ? 1 : 0) |
                      (f == plain || (f == enhanced && f.arguments.substr(cut) == tail &&
                                      std::regex_match(f.arguments.substr(0, cut), profiles)) ? 0 : 4);
        }
        return broken;
    }

    // Drop, two Adds, Save, the enhanced shortcut dropped and restored; then restore-all,
    // whose dialog is never to show. step(road) after each step; a drop refused shows "no
    // drop", which tells the user as a message box does.
    void Play(const std::function<void(bool)>& step)
    {
        CLinkDlg dialog;
        auto drop = [&] {
            if (!Drop(dialog, Race))
                DialogModel().messageBoxes.push_back("no drop");
        };
        Run(dialog, [&](CModelWindow& window) {
            step(true);
            drop();
            step(true);
            for (int entry : {1, 0}) {
                window.controls[IDC_PROFILE_COMBO].selection = {entry};
                window.Press(IDC_ADD);
                step(true);
            }
            window.Press(IDOK);
            step(true);
            drop();
            window.Press(IDC_RESTORE);
            step(true);
        });
        DialogModel().commandLine = "x -RestoreAll";
        CLinkDlg restoreAll;
        Run(restoreAll, [this](CModelWindow&) { ++shown; });
        step(false);
    }

    // One clean run gives the count and each step's state; then each call of the seam fails in
    // turn (from the first, every step-th: the allocations are swept in two halves that run side
    // by side). A fault is lost when the step it fell in left the state as it was, unlike the
    // clean run, without telling the user.
    void Sweep(const Seam& seam, long first = 1, long step = 1)
    {
        long lost = 0, stray = 0;
        int broken[3] = {};
        shown = 0;
        Prepare();
        std::vector<State> clean{Capture()};
        seam.failAt(0);
        Play([&](bool) { clean.push_back(Capture()); });
        const long count = seam.made();
        for (long n = first; n <= count; n += step) {
            Prepare();
            State before = Capture();
            std::size_t steps = 0, boxes = 0;
            long madeBefore = 0;
            int brokenHere = 0;
            seam.failAt(n);
            Play([&](bool road) {
                const long made = seam.made();
                const State after = Capture(), &should = clean[std::min(++steps, clean.size() - 1)];
                lost += road && madeBefore < n && made >= n && DialogModel().messageBoxes.size() == boxes && after == before &&
                        after != should;
                brokenHere |= Broken();
                before = after;
                madeBefore = made;
                boxes = DialogModel().messageBoxes.size();
            });
            seam.failAt(0);
            for (int bit = 0; bit < 3; ++bit)
                broken[bit] += brokenHere >> bit & 1;
            for (const char* place : StrayPlaces)
                stray += fs::remove(place) ? 1 : 0;
            stray += OpenFiles();   // a file left open
            for (const std::string& path : ShellLinkModel::FilePaths())
                stray += Shortcuts.count(path) ? 0 : 1;
        }
        std::printf("%s from %ld: %ld swept; runs breaking (a) %d, (c) %d, (d) %d; %ld lost, %ld stray, %ld shown\n", seam.name,
                    first, (count - first) / step + 1, broken[0], broken[1], broken[2], lost, stray, shown);
        EXPECT_EQ(0, broken[0] + broken[1] + broken[2] + lost + stray + shown) << seam.name;
    }

    long shown = 0;   // restore-all runs whose dialog showed
};

const Seam Allocations{"allocations", [](long n) { FailAllocation(n); }, AllocationsMade};
const Seam IoCallSeam{"file calls and link steps", [](long n) { IoCalls().FailAt(n); }, [] { return IoCalls().Made(); }};
// A crash after the nth write: that write and those before it are on the disk, none after it.
const Seam Crashes{"crash after a write", [](long n) { IoWrites().FailAt(n ? n + 1 : 0, CFaultSeam::Onwards); },
                   [] { return IoWrites().Made(); }};
const Seam GarbledSaves{"saves the shell garbles", [](long n) { ShellLinkModel::Garbles().FailAt(n); },
                        [] { return ShellLinkModel::Garbles().Made(); }};

TEST_F(FaultSweep, OddAllocations) { Sweep(Allocations, 1, 2); }
TEST_F(FaultSweep, EvenAllocations) { Sweep(Allocations, 2, 2); }

TEST_F(FaultSweep, FileCallsLinkStepsGarblesAndCrashes)
{
    for (const Seam& seam : {IoCallSeam, GarbledSaves, Crashes})
        Sweep(seam);
}

}   // namespace
