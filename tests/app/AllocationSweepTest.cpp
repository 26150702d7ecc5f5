// Every allocation of a scenario failed once in turn: after each step the files of the
// installation folder and the stand-in's shortcuts are as before the step or as a clean
// run leaves them, never anything else, and nothing is written outside the folder.
// Crashes and leaks are the sanitizers' to find.

#include "AppFixture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "platform/model/ShellLinkModel.h"
#include "tests/chunks/ChunkBytes.h"
#include "text/Allocation.h"

namespace {

namespace fs = std::filesystem;
using ShellLinkModel::LinkFile;
using ShellLinkModel::Wide;

// Every file of the installation folder by relative path, and every shortcut of the
// scenario by "link " and its path: the bytes, or the fields.
using State = std::map<std::string, std::string>;

// Where a path cut short would have put a list file: the drive's root and the current folder.
const char* const StrayPlaces[] = {"/ShortcutList", "/ShortcutList.txt", "ShortcutList", "ShortcutList.txt"};

class AllocationSweep : public AppFixture {
protected:
    // A scenario writes its start afresh in prepare; run calls step() after each step.
    // tells: a failed step is to be told to the user.
    struct Scenario {
        std::function<void()> prepare;
        std::function<void(const std::function<void()>& step)> run;
        bool tells = false;
    };

    // The files and the shortcuts. The profiles a shortcut names are left out: a failed step
    // earlier may have changed what the user chose, which is no harm.
    State Capture() const
    {
        State state;
        for (const auto& entry : fs::recursive_directory_iterator(nativeFolder)) {
            const std::string name = fs::relative(entry.path(), nativeFolder).string();
            if (entry.is_regular_file())
                state[name] = ReadProgramFile(name);
        }
        for (const std::string& link : links) {
            const LinkFile f = ShellLinkModel::GetFile(Wide(link));
            std::string& fields = state["link " + link] = f.path + '|' + f.arguments + '|' + f.workDir + '|' +
                                                          f.iconPath + '|' + std::to_string(f.iconIndex) + '|' + f.description;
            for (std::size_t at; (at = fields.find("profile=\"")) != std::string::npos;)
                fields.erase(at, fields.find('"', at + 9) + 2 - at);
        }
        return state;
    }

    // A fresh installation folder; the shortcuts are the scenario's to put.
    void Fresh()
    {
        for (const auto& entry : fs::directory_iterator(nativeFolder))
            fs::remove_all(entry.path());
        WriteProgramFile("Zelmar.exe", "MZ");
        ShellLinkModel::Reset();
    }

    // One clean run gives the count and each step's state; then allocation n fails, for
    // every n. A step is torn when it leaves a state that is neither the one before it nor
    // the clean one after it (item by item: a file or shortcut that is neither, for a step
    // that changes many independent shortcuts). It is lost when the failure fell in it and
    // it left the state before it without telling the user; item by item, when a shortcut
    // is left as it was though the registry file that would put it back is gone.
    void Sweep(const char* name, const Scenario& scenario, bool byItem = false)
    {
        long swept = 0, lost = 0, torn = 0, stray = 0;
        scenario.prepare();
        std::vector<State> clean{Capture()};
        FailAllocation(0);
        scenario.run([&] { clean.push_back(Capture()); });
        const long count = AllocationsMade();
        // LW_SWEEP_STRIDE=k fails only every kth allocation: for quick runs, such as mutation runs.
        const char* strideSet = std::getenv("LW_SWEEP_STRIDE");
        const long stride = strideSet ? std::max(1L, std::atol(strideSet)) : 1;
        for (long n = 1; n <= count; n += stride, ++swept) {
            scenario.prepare();
            State before = Capture();
            std::size_t step = 0, boxes = DialogModel().messageBoxes.size();
            long madeBefore = 0;
            FailAllocation(n);
            scenario.run([&] {
                const long made = AllocationsMade();
                const State after = Capture(), &should = clean[std::min(++step, clean.size() - 1)];
                bool failed = scenario.tells && madeBefore < n && made >= n &&
                              DialogModel().messageBoxes.size() == boxes && after == before && after != should;
                bool tornItem = false;
                State keys = before;
                keys.insert(after.begin(), after.end());
                keys.insert(should.begin(), should.end());
                auto at = [](const State& s, const std::string& key) { return s.count(key) ? "=" + s.at(key) : "-"; };
                for (const auto& key : keys) {
                    const std::string got = at(after, key.first), was = at(before, key.first);
                    tornItem = tornItem || (got != was && got != at(should, key.first));
                    failed = failed || (byItem && before.count("ShortcutList") && !after.count("ShortcutList") &&
                                        key.first.rfind("link ", 0) == 0 && got == was && got != at(should, key.first));
                }
                torn += (byItem ? tornItem : after != before && after != should) ? 1 : 0;
                lost += failed ? 1 : 0;
                before = after;
                madeBefore = made;
                boxes = DialogModel().messageBoxes.size();
            });
            FailAllocation(0);
            for (const char* place : StrayPlaces)
                stray += fs::remove(place) ? 1 : 0;
        }
        std::printf("sweep %s: %ld allocations swept, %ld lost, %ld torn, %ld stray\n", name, swept, lost, torn, stray);
        EXPECT_GT(swept * stride, 100);
        EXPECT_EQ(0, lost + torn + stray);
    }

    const LinkFile plain{"C:\\Games\\race.exe", "-f \"a b\"", "C:\\Games", "C:\\Games\\race.ico", 2, "kept"};
    std::vector<std::string> links;
};

TEST_F(AllocationSweep, TheRoadIsUndoableAtEveryStep)
{
    const std::string wheel = Profile("Wheel"), yoke = Profile("Yoke");
    links = {"C:\\Links\\Race.lnk"};
    const Scenario road{[&] {
                            Fresh();
                            WriteProgramFile("Profiles/a.idprof", wheel);
                            WriteProgramFile("Profiles/b.idprof", yoke);
                            ShellLinkModel::PutFile(Wide(links[0]), plain);
                            WriteProgramFile("ShortcutList", Wide("C:\\Links\\Other.lnk"));
                            WriteProgramFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n");
                        },
                        [&](const std::function<void()>& step) {
                            CLinkDlg dialog;
                            // A drop refused shows "no drop", which tells the user as a
                            // message box does. One taken that could not load the shortcut
                            // says so and keeps nothing of it.
                            auto drop = [&] {
                                const std::size_t boxes = DialogModel().messageBoxes.size();
                                if (!Drop(dialog, links[0]))
                                    DialogModel().messageBoxes.push_back("no drop");
                                else
                                    EXPECT_TRUE(dialog.IsItemEnabled(IDC_ADD) ||
                                                (DialogModel().messageBoxes.size() > boxes && dialog.m_selected.IsEmpty() &&
                                                 dialog.m_target.IsEmpty() && dialog.m_targetDir.IsEmpty() && dialog.m_args.IsEmpty()));
                            };
                            Run(dialog, [&](CModelWindow& window) {
                                step();
                                drop();
                                step();
                                for (int entry : {1, 0}) {
                                    window.controls[IDC_PROFILE_COMBO].selection = {entry};
                                    window.Press(IDC_ADD);
                                    step();
                                }
                                window.Press(IDOK);
                                step();
                                drop();   // the enhanced shortcut, restored in the same step
                                window.Press(IDC_RESTORE);
                                step();
                            });
                        },
                        true};
    Sweep("road", road);
}

// A shortcut left enhanced once the list files are gone can no longer be put back.
TEST_F(AllocationSweep, RestoreAllLosesNoShortcut)
{
    const std::string yoke = Profile("Yoke");
    std::string list;
    for (int i = 0; i < 10; ++i) {
        links.push_back("C:\\Links\\s" + std::to_string(i) + ".lnk");
        list += Wide(links.back());
    }
    const Scenario restoreAll{[&] {
                                  Fresh();
                                  WriteProgramFile("Profiles/b.idprof", yoke);
                                  WriteProgramFile("ShortcutList", list);
                                  WriteProgramFile("ShortcutList.txt", "report");
                                  WriteProgramFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n");
                                  for (const std::string& link : links)
                                      ShellLinkModel::PutFile(Wide(link), {ProgramPath("Zelmar.exe"),
                                                                           "profile=\"Yoke\" target=\"C:\\g.exe\" "
                                                                           "targetDir=\"C:\\G\" args=\"-f {a b}\"",
                                                                           folder, "C:\\g.ico", 1, "kept"});
                              },
                              [&](const std::function<void()>& step) {
                                  DialogModel().commandLine = "Linkwright.exe -RestoreAll";
                                  CLinkDlg dialog;
                                  Run(dialog);
                                  step();
                              }};
    Sweep("restore-all", restoreAll, true);
    DialogModel().commandLine = "Linkwright.exe";
}

}   // namespace
