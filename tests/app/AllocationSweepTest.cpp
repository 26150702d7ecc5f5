// The road of one shortcut with every allocation failed once in turn: after each step the
// files of the installation folder and the stand-in's shortcut are as before the step or as
// a clean run leaves them, never anything else, and nothing is written outside the folder.
// Crashes and leaks are the sanitizers' to find.

#include "AppFixture.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>

#include "tests/chunks/ChunkBytes.h"
#include "text/Allocation.h"

namespace {

namespace fs = std::filesystem;
using ShellLinkModel::Wide;

// Every file of the installation folder by relative path, and the shortcut by "link": the
// bytes, or the fields.
using State = std::map<std::string, std::string>;

// Where a path cut short would have put a list file: the drive's root and the current folder.
const char* const StrayPlaces[] = {"/ShortcutList", "/ShortcutList.txt", "ShortcutList", "ShortcutList.txt"};
const char Link[] = "C:\\Links\\Race.lnk";

class AllocationSweep : public AppFixture {
protected:
    // The files and the shortcut. The profiles the shortcut names are left out: a failed step
    // earlier may have changed what the user chose, which is no harm.
    State Capture() const
    {
        State state;
        for (const auto& entry : fs::recursive_directory_iterator(nativeFolder)) {
            const std::string name = fs::relative(entry.path(), nativeFolder).string();
            if (entry.is_regular_file())
                state[name] = ReadProgramFile(name);
        }
        const ShellLinkModel::LinkFile f = ShellLinkModel::GetFile(Wide(Link));
        std::string& fields = state["link"] = f.path + '|' + f.arguments + '|' + f.workDir + '|' + f.iconPath + '|' +
                                              std::to_string(f.iconIndex) + '|' + f.description;
        for (std::size_t at; (at = fields.find("profile=\"")) != std::string::npos;)
            fields.erase(at, fields.find('"', at + 9) + 2 - at);
        return state;
    }

    // A fresh installation with two profiles, another listed shortcut and quote characters.
    void Prepare()
    {
        for (const auto& entry : fs::directory_iterator(nativeFolder))
            fs::remove_all(entry.path());
        WriteProgramFile("Zelmar.exe", "MZ");
        WriteProgramFile("Profiles/a.idprof", Profile("Wheel"));
        WriteProgramFile("Profiles/b.idprof", Profile("Yoke"));
        WriteProgramFile("ShortcutList", Wide("C:\\Links\\Other.lnk"));
        WriteProgramFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n");
        ShellLinkModel::Reset();
        ShellLinkModel::PutFile(Wide(Link), {"C:\\Games\\race.exe", "-f \"a b\"", "C:\\Games", "C:\\Games\\race.ico", 2, "kept"});
    }

    // Drop, two Adds, Save, and the enhanced shortcut dropped and restored; step() after each.
    // A drop refused shows "no drop", which tells the user as a message box does. One taken
    // that could not load the shortcut says so and keeps nothing of it.
    void Road(const std::function<void()>& step)
    {
        CLinkDlg dialog;
        auto drop = [&] {
            const std::size_t boxes = DialogModel().messageBoxes.size();
            if (!Drop(dialog, Link))
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
            drop();
            window.Press(IDC_RESTORE);
            step();
        });
    }
};

// One clean run gives the count and each step's state; then allocation n fails, for every n.
// A step is torn when it leaves a state that is neither the one before it nor the clean one
// after it. It is lost when the failure fell in it and it left the state before it without
// telling the user.
TEST_F(AllocationSweep, TheRoadIsUndoableAtEveryStep)
{
    long swept = 0, lost = 0, torn = 0, stray = 0;
    Prepare();
    std::vector<State> clean{Capture()};
    FailAllocation(0);
    Road([&] { clean.push_back(Capture()); });
    const long count = AllocationsMade();
    for (long n = 1; n <= count; n += SweepStride(), ++swept) {
        Prepare();
        State before = Capture();
        std::size_t step = 0, boxes = DialogModel().messageBoxes.size();
        long madeBefore = 0;
        FailAllocation(n);
        Road([&] {
            const long made = AllocationsMade();
            const State after = Capture(), &should = clean[std::min(++step, clean.size() - 1)];
            lost += madeBefore < n && made >= n && DialogModel().messageBoxes.size() == boxes && after == before &&
                    after != should;
            torn += after != before && after != should;
            before = after;
            madeBefore = made;
            boxes = DialogModel().messageBoxes.size();
        });
        FailAllocation(0);
        for (const char* place : StrayPlaces)
            stray += fs::remove(place) ? 1 : 0;
    }
    std::printf("sweep: %ld allocations swept, %ld lost, %ld torn, %ld stray\n", swept, lost, torn, stray);
    EXPECT_GT(swept * SweepStride(), 100);
    EXPECT_EQ(0, lost + torn + stray);
}

}   // namespace
