// The profile lists: what Add and Remove do to m_selected and to the list view that shows it.

#include "AppFixture.h"

#include <algorithm>
#include <cctype>

#include "text/Allocation.h"

namespace {

class ListsTest : public AppFixture {
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        WriteProfile("a.idprof", "Alpha");
        WriteProfile("b.idprof", "Beta");
        WriteProfile("c.idprof", "alpha");
        WriteProfile("d.idprof", "Gamma");
    }

    // Runs the dialog with a plain (or enhanced) shortcut loaded holding these names.
    void WithLoaded(bool enhanced, const std::vector<std::string>& names,
                    std::function<void(CLinkDlg&, CModelWindow&)> session)
    {
        CLinkDlg dialog;
        Run(dialog, [&](CModelWindow& window) {
            dialog.ResetControls();
            dialog.m_selected.Clear();
            for (const std::string& name : names)
                ASSERT_TRUE(InsertEntry(dialog.m_selected, CTextString(name.c_str())));
            dialog.m_isEnhanced = enhanced;
            dialog.RefreshSelected();
            dialog.ShowEditable();
            session(dialog, window);
        });
    }

    static int EntryOf(CModelWindow& window, const std::string& name)
    {
        const std::vector<std::string>& entries = window.Control(IDC_PROFILE_COMBO)->entries;
        return static_cast<int>(std::find(entries.begin(), entries.end(), name) - entries.begin());
    }

    static void Add(CModelWindow& window, const std::string& name)
    {
        ASSERT_TRUE(window.SelectEntry(IDC_PROFILE_COMBO, EntryOf(window, name)));
        ASSERT_TRUE(window.Press(IDC_ADD));
    }

    static std::vector<std::string> Rows(CModelWindow& window)
    {
        return window.Control(IDC_SELECTED_LIST)->RowTexts();
    }
};

// The list shows the names sorted; the chain keeps the order they were added in, which is
// the order Save writes them.
TEST_F(ListsTest, AddKeepsTheChainInItsOwnOrderAndTheListSorted)
{
    WithLoaded(false, {}, [&](CLinkDlg& dialog, CModelWindow& window) {
        Add(window, "Gamma");
        Add(window, "Beta");
        EXPECT_EQ((std::vector<std::string>{"Gamma", "Beta"}), Names(dialog.m_selected));
        EXPECT_EQ((std::vector<std::string>{"Beta", "Gamma"}), Rows(window));
    });
}

// The list view's find ignores case: a catalogue name that differs from a chosen one only
// in case can't be added, and in the Plain state Save stays off.
TEST_F(ListsTest, AddingANameTheListShowsChangesNothing)
{
    WithLoaded(false, {"Alpha"}, [&](CLinkDlg& dialog, CModelWindow& window) {
        for (const char* name : {"Alpha", "alpha"}) {
            Add(window, name);
            EXPECT_EQ((std::vector<std::string>{"Alpha"}), Names(dialog.m_selected)) << name;
            EXPECT_FALSE(window.Control(IDOK)->enabled) << name;
            EXPECT_FALSE(window.Control(IDC_REMOVE)->enabled) << name;
        }
    });
}

// Add takes the current entry of the list part only: a typed name is never added.
TEST_F(ListsTest, AddIgnoresTheEditFieldAndNeedsACurrentEntry)
{
    WithLoaded(false, {}, [&](CLinkDlg& dialog, CModelWindow& window) {
        ASSERT_TRUE(window.SelectEntry(IDC_PROFILE_COMBO, -1));
        ASSERT_TRUE(window.TypeText(IDC_PROFILE_COMBO, "Typed"));
        ASSERT_TRUE(window.Press(IDC_ADD));
        EXPECT_TRUE(dialog.m_selected.IsEmpty());
        EXPECT_FALSE(window.Control(IDOK)->enabled);

        ASSERT_TRUE(window.SelectEntry(IDC_PROFILE_COMBO, EntryOf(window, "Beta")));
        ASSERT_TRUE(window.TypeText(IDC_PROFILE_COMBO, "Typed"));
        ASSERT_TRUE(window.Press(IDC_ADD));
        EXPECT_EQ((std::vector<std::string>{"Beta"}), Names(dialog.m_selected));
    });
}

// Failure sweep: whichever allocation fails, Add either changes nothing (the name could not
// be read) or ends with Save enabled, the name stored or lost; and the lists agree.
TEST_F(ListsTest, AddCopesWithAnyFailedAllocation)
{
    bool lostButEnabled = false;
    for (long n = 1; n <= 12; ++n) {
        SCOPED_TRACE(n);
        WithLoaded(false, {}, [&](CLinkDlg& dialog, CModelWindow& window) {
            ASSERT_TRUE(window.SelectEntry(IDC_PROFILE_COMBO, EntryOf(window, "Beta")));
            FailAllocation(n);
            ASSERT_TRUE(window.Press(IDC_ADD));
            FailAllocation(0);
            std::vector<std::string> names = Names(dialog.m_selected);
            EXPECT_TRUE(names.empty() || names == std::vector<std::string>{"Beta"});
            EXPECT_EQ(names, Rows(window));
            bool saveOn = window.Control(IDOK)->enabled;
            EXPECT_EQ(saveOn, window.Control(IDC_REMOVE)->enabled);
            if (!names.empty()) {
                EXPECT_TRUE(saveOn);
            }
            lostButEnabled = lostButEnabled || (names.empty() && saveOn);
        });
    }
    EXPECT_TRUE(lostButEnabled);
}

TEST_F(ListsTest, RemoveTakesEverySelectedRowAndNothingWithoutOne)
{
    struct Row {
        const char* name;
        std::vector<std::string> chain;   // m_selected before
        std::vector<int> selected;        // rows of the sorted list
        std::vector<std::string> after;   // m_selected after
        bool saveOn;
    };
    const Row rows[] = {
        {"nothing selected", {"Gamma", "Beta"}, {}, {"Gamma", "Beta"}, false},
        {"one row", {"Gamma", "Beta"}, {1}, {"Beta"}, true},
        {"first and last of three", {"Gamma", "Alpha", "Beta"}, {0, 2}, {"Beta"}, true},
        {"all of three", {"Gamma", "Alpha", "Beta"}, {0, 1, 2}, {}, false},
        // A name repeated in the argument line shows twice; one row takes the first node.
        {"one of two equal rows", {"Beta", "Gamma", "Beta"}, {1}, {"Gamma", "Beta"}, true},
        {"both equal rows", {"Beta", "Gamma", "Beta"}, {0, 1}, {"Gamma"}, true},
        // Matching is byte for byte: "alpha" leaves "Alpha" where it is.
        {"case differs", {"Alpha", "alpha"}, {1}, {"Alpha"}, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        WithLoaded(true, row.chain, [&](CLinkDlg& dialog, CModelWindow& window) {
            std::vector<std::string> shown = Rows(window);
            if (!row.selected.empty()) {
                ASSERT_TRUE(window.SelectRows(IDC_SELECTED_LIST, row.selected));
            }
            ASSERT_TRUE(window.Press(IDC_REMOVE));
            EXPECT_EQ(row.after, Names(dialog.m_selected));
            std::vector<std::string> expected = row.after;
            std::stable_sort(expected.begin(), expected.end(), [](const std::string& a, const std::string& b) {
                return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
                    return std::toupper(static_cast<unsigned char>(x)) < std::toupper(static_cast<unsigned char>(y));
                });
            });
            EXPECT_EQ(row.selected.empty() ? shown : expected, Rows(window));
            EXPECT_TRUE(window.Control(IDC_SELECTED_LIST)->SelectedRows().empty());
            EXPECT_EQ(row.saveOn, window.Control(IDOK)->enabled);
            EXPECT_TRUE(window.Control(IDC_REMOVE)->enabled);
            EXPECT_TRUE(window.Control(IDC_SELECTED_LIST)->enabled);
            EXPECT_TRUE(window.Control(IDC_RESTORE)->enabled);
        });
    }
}

// A name from the argument line need not be in the catalogue: it can be removed, and
// then there is no way to add it again.
TEST_F(ListsTest, ANameOutsideTheCatalogueGoesForGood)
{
    WithLoaded(true, {"Delta"}, [&](CLinkDlg& dialog, CModelWindow& window) {
        EXPECT_EQ((std::vector<std::string>{"Delta"}), Rows(window));
        ASSERT_TRUE(window.SelectRows(IDC_SELECTED_LIST, {0}));
        ASSERT_TRUE(window.Press(IDC_REMOVE));
        EXPECT_TRUE(dialog.m_selected.IsEmpty());
        EXPECT_EQ(window.Control(IDC_PROFILE_COMBO)->entries.end(),
                  std::find(window.Control(IDC_PROFILE_COMBO)->entries.begin(),
                            window.Control(IDC_PROFILE_COMBO)->entries.end(), "Delta"));
    });
}

TEST_F(ListsTest, WithoutTheirControlsAddAndRemoveDoNothing)
{
    for (int missing : {IDC_PROFILE_COMBO, IDC_SELECTED_LIST}) {
        SCOPED_TRACE(missing);
        DialogModel().templates[IDD_LINKWRIGHT_DIALOG] = MainTemplateControls({missing});
        WithLoaded(true, {"Beta"}, [&](CLinkDlg& dialog, CModelWindow&) {
            dialog.OnAdd();
            dialog.OnRemove();
            dialog.RefreshSelected();
            EXPECT_EQ((std::vector<std::string>{"Beta"}), Names(dialog.m_selected));
        });
    }
}

}   // namespace
