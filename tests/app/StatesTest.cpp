// The dialog's states, walked transition by transition with the whole control set checked
// after each step. The moves that belong to the analysis and to Save/Restore are played
// here by what they do to the dialog: the verdict, then ResetControls, RefreshSelected and
// ShowEditable.

#include "AppFixture.h"

namespace {

struct ControlSet {
    bool combo, add, list, remove, save, restore, label;

    bool operator==(const ControlSet& o) const
    {
        return combo == o.combo && add == o.add && list == o.list && remove == o.remove && save == o.save &&
               restore == o.restore && label == o.label;
    }
};

std::ostream& operator<<(std::ostream& out, const ControlSet& s)
{
    return out << "combo " << s.combo << " add " << s.add << " list " << s.list << " remove " << s.remove
               << " save " << s.save << " restore " << s.restore << " label " << s.label;
}

const ControlSet Empty = {false, false, false, false, false, false, false};
const ControlSet Plain = {true, true, false, false, false, false, false};
const ControlSet Picking = {true, true, true, true, true, false, false};
const ControlSet PickingNone = {true, true, true, true, false, false, false};
const ControlSet Enhanced = {true, true, true, true, false, true, true};
const ControlSet Edited = {true, true, true, true, true, true, true};
const ControlSet EditedNone = {true, true, true, true, false, true, true};

ControlSet ControlsOf(CModelWindow& window)
{
    return {window.Control(IDC_PROFILE_COMBO)->enabled, window.Control(IDC_ADD)->enabled,
            window.Control(IDC_SELECTED_LIST)->enabled, window.Control(IDC_REMOVE)->enabled,
            window.Control(IDOK)->enabled,          window.Control(IDC_RESTORE)->enabled,
            window.Control(IDC_ENABLED_LABEL)->visible};
}

void Load(CLinkDlg& dialog, bool enhanced, const std::vector<std::string>& names)
{
    dialog.ResetControls();
    dialog.m_selected.Clear();
    for (const std::string& name : names)
        ASSERT_TRUE(InsertEntry(dialog.m_selected, CTextString(name.c_str())));
    dialog.m_isEnhanced = enhanced;
    if (enhanced)
        dialog.RefreshSelected();
    dialog.ShowEditable();
}

class StatesTest : public AppFixture {
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        WriteProfile("a.idprof", "Alpha");
        WriteProfile("b.idprof", "Beta");
        WriteProfile("c.idprof", "Gamma");
    }
};

TEST_F(StatesTest, EveryMoveLeavesTheControlSetOfItsState)
{
    struct Step {
        const char* move;
        std::function<void(CLinkDlg&, CModelWindow&)> act;
        ControlSet expected;
        std::vector<std::string> rows;
    };
    auto add = [](int entry) {
        return [entry](CLinkDlg&, CModelWindow& w) {
            ASSERT_TRUE(w.SelectEntry(IDC_PROFILE_COMBO, entry));
            ASSERT_TRUE(w.Press(IDC_ADD));
        };
    };
    auto remove = [](std::vector<int> rows) {
        return [rows](CLinkDlg&, CModelWindow& w) {
            ASSERT_TRUE(w.SelectRows(IDC_SELECTED_LIST, rows));
            ASSERT_TRUE(w.Press(IDC_REMOVE));
        };
    };
    auto load = [](bool enhanced, std::vector<std::string> names) {
        return [enhanced, names](CLinkDlg& d, CModelWindow&) { Load(d, enhanced, names); };
    };
    auto refuse = [](CLinkDlg& d, CModelWindow&) { d.ResetControls(); };

    const std::vector<Step> steps = {
        {"start", [](CLinkDlg&, CModelWindow&) {}, Empty, {}},
        {"plain loaded", load(false, {}), Plain, {}},
        {"add Beta", add(1), Picking, {"Beta"}},
        {"add Alpha", add(0), Picking, {"Alpha", "Beta"}},
        {"add Beta again", add(1), Picking, {"Alpha", "Beta"}},
        {"remove Alpha", remove({0}), Picking, {"Beta"}},
        {"remove the last", remove({0}), PickingNone, {}},
        {"remove with no row", [](CLinkDlg&, CModelWindow& w) { w.Press(IDC_REMOVE); }, PickingNone, {}},
        {"add Gamma", add(2), Picking, {"Gamma"}},
        {"enhanced loaded", load(true, {"Gamma"}), Enhanced, {"Gamma"}},
        {"refused", refuse, Empty, {}},
        {"enhanced loaded", load(true, {"Beta", "Alpha"}), Enhanced, {"Alpha", "Beta"}},
        {"add Gamma", add(2), Edited, {"Alpha", "Beta", "Gamma"}},
        {"remove two", remove({0, 2}), Edited, {"Beta"}},
        {"remove the last", remove({0}), EditedNone, {}},
        {"add Alpha", add(0), Edited, {"Alpha"}},
        {"plain loaded", load(false, {}), Plain, {}},
        {"enhanced loaded", load(true, {"Alpha"}), Enhanced, {"Alpha"}},
        {"remove it", remove({0}), EditedNone, {}},
        {"plain loaded", load(false, {}), Plain, {}},
        {"refused", refuse, Empty, {}},
    };

    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        for (const Step& step : steps) {
            SCOPED_TRACE(step.move);
            step.act(dialog, window);
            EXPECT_EQ(step.expected, ControlsOf(window));
            EXPECT_EQ(step.rows, window.Control(IDC_SELECTED_LIST)->RowTexts());
            EXPECT_TRUE(window.Control(IDC_HELP_BUTTON)->enabled);
            EXPECT_TRUE(window.Control(IDCANCEL)->enabled);
        }
    });
}

TEST_F(StatesTest, ResettingLeavesTheNameAndTheChosenProfilesAlone)
{
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        Load(dialog, true, {"Beta"});
        window.Control(IDC_SHORTCUT_NAME)->text = "Game";
        dialog.ResetControls();
        EXPECT_EQ(Empty, ControlsOf(window));
        EXPECT_TRUE(window.Control(IDC_SELECTED_LIST)->rows.empty());
        EXPECT_EQ("Game", window.Control(IDC_SHORTCUT_NAME)->text);
        EXPECT_EQ((std::vector<std::string>{"Beta"}), Names(dialog.m_selected));
    });
}

}   // namespace
