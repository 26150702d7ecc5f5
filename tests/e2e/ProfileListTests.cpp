// The chosen profiles of Linkwright.exe worked with the mouse under Wine: entries picked from
// the combo box, rows selected with clicks and Ctrl-clicks, and the dialog's controls held
// against its state after every step.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/Resource.h"
#include "tests/e2e/Controls.h"
#include "tests/e2e/DialogTest.h"

namespace e2e {
namespace {

using Names = std::vector<std::string>;
using ProfileListTest = DialogTest;

TEST_F(ProfileListTest, AddRefusesDuplicatesRemoveTakesSeveralRowsAndSaveNeedsAProfile)
{
    // A catalogue name that differs from another in letter case alone.
    ASSERT_TRUE(installation.AddProfile("loud.idprof", "RACING WHEEL"));
    StartProgram();
    ASSERT_TRUE(DropShortcut());
    ASSERT_EQ(ControlSet(), kPlain);

    ASSERT_TRUE(Add("Racing Wheel"));
    EXPECT_EQ(ControlSet(), kPicking);
    // Neither the same name nor its other case comes in; input is taken in order, so once the
    // next name is in, both refusals have been handled.
    ASSERT_TRUE(PickEntry(Control(IDC_PROFILE_COMBO), "Racing Wheel") && Press(dialog, IDC_ADD));
    ASSERT_TRUE(PickEntry(Control(IDC_PROFILE_COMBO), "RACING WHEEL") && Press(dialog, IDC_ADD));
    ASSERT_TRUE(Add("Flight Yoke"));
    ASSERT_TRUE(Add("Arcade Stick"));
    EXPECT_EQ(Chosen(), (Names{"Arcade Stick", "Flight Yoke", "Racing Wheel"}));

    // The first and the last row at once; afterwards no row is selected.
    ASSERT_TRUE(Remove({"Arcade Stick", "Racing Wheel"}));
    EXPECT_EQ(Chosen(), (Names{"Flight Yoke"}));
    EXPECT_TRUE(SelectedRows(Control(IDC_SELECTED_LIST)).empty());
    EXPECT_EQ(ControlSet(), kPicking);
    ASSERT_TRUE(Remove({"Flight Yoke"}));
    EXPECT_EQ(ControlSet(), kPickingNone);

    ASSERT_TRUE(Add("RACING WHEEL"));
    EXPECT_EQ(ControlSet(), kPicking);
    ASSERT_TRUE(Save()) << "Save did not finish";
    ShortcutFacts saved;
    ASSERT_EQ(ReadShortcut(link, &saved), S_OK);
    EXPECT_EQ(saved.arguments.rfind("profile=\"RACING WHEEL\" target=", 0), 0u) << saved.arguments;

    // An enhanced shortcut without profiles can be restored but not saved.
    ASSERT_TRUE(Remove({"RACING WHEEL"}));
    EXPECT_EQ(ControlSet(), kEnhanced);
    ASSERT_TRUE(Restore()) << "Restore did not finish";
    EXPECT_EQ(ControlSet(), kPlain);
    ASSERT_EQ(ReadShortcut(link, &saved), S_OK);
    EXPECT_EQ(saved.target, game.target);
    EXPECT_EQ(saved.arguments, game.arguments);
}

}  // namespace
}  // namespace e2e
