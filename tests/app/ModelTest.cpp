// The model controls behave as the real ones where the dialogs' logic depends on it.

#include <gtest/gtest.h>

#include "platform/model/DialogModel.h"
#include "text/TextString.h"

namespace {

const int Combo = 10;
const int List = 11;
const int Template = 500;

class Probe : public CDialog {
public:
    Probe() : CDialog(Template) {}
    void OnAppMessage() override { ++messages; }
    int messages = 0;
};

class ModelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ResetDialogModel();
        DialogModel().templates[Template] = {{Combo, ModelCombo}, {List, ModelListView}, {IdOk, ModelButton}};
    }
};

TEST_F(ModelTest, TheComboBoxSortsAndItsCurrentEntryStaysPut)
{
    Probe probe;
    DialogModel().sessions[Template] = [&](CModelWindow& window) {
        probe.ComboAddString(Combo, "beta");
        probe.ComboSetCurSel(Combo, 0);
        probe.ComboAddString(Combo, "Alpha");
        probe.ComboAddString(Combo, "gamma");
        EXPECT_EQ((std::vector<std::string>{"Alpha", "beta", "gamma"}), window.Control(Combo)->entries);
        EXPECT_EQ(1, probe.ComboGetCurSel(Combo));
        CTextString text;
        for (int index : {-1, 3}) {
            text.Assign("old");
            probe.ComboGetLBText(Combo, index, text);
            EXPECT_TRUE(text.IsEmpty()) << index;
        }
        probe.ComboGetLBText(Combo, 1, text);
        EXPECT_STREQ("beta", text.Text());
    };
    probe.DoModal();
}

TEST_F(ModelTest, TheListViewSortsFindsWholeTextsAndRenumbersAfterADelete)
{
    Probe probe;
    DialogModel().sessions[Template] = [&](CModelWindow& window) {
        for (const char* text : {"delta", "Bravo", "alpha", "Charlie"})
            probe.ListInsertItem(List, 0, text);
        EXPECT_EQ((std::vector<std::string>{"alpha", "Bravo", "Charlie", "delta"}), window.Control(List)->RowTexts());
        EXPECT_EQ(1, probe.ListFindItem(List, "BRAVO"));
        EXPECT_EQ(-1, probe.ListFindItem(List, "Brav"));
        EXPECT_EQ(-1, probe.ListFindItem(List, "Bravos"));

        ASSERT_TRUE(window.SelectRows(List, {1, 3}));
        EXPECT_EQ(1, probe.ListGetNextSelected(List, -1));
        EXPECT_EQ(3, probe.ListGetNextSelected(List, 1));
        EXPECT_EQ(-1, probe.ListGetNextSelected(List, 3));
        probe.ListDeleteItem(List, 0);
        EXPECT_EQ(0, probe.ListGetNextSelected(List, -1));
        EXPECT_EQ(2, probe.ListGetNextSelected(List, 0));
    };
    probe.DoModal();
}

TEST_F(ModelTest, PostedMessagesWaitForThePumpAndDieWithTheirDialog)
{
    CDialogModel& model = DialogModel();
    model.messageAnswers = {IdCancel};
    Probe probe;
    model.sessions[Template] = [&](CModelWindow& window) {
        probe.QueueAppMessage();
        probe.QueueAppMessage();
        EXPECT_EQ(0, probe.messages);
        EXPECT_EQ(2, model.PumpMessages());
        EXPECT_EQ(2, probe.messages);
        EXPECT_EQ(IdCancel, probe.ShowMessage("text", "caption", MessageIconExclamation));
        EXPECT_EQ(IdOk, probe.ShowMessage("again", "caption", MessageOk));
        probe.QueueAppMessage();
        EXPECT_TRUE(window.Press(IdOk));
    };
    EXPECT_EQ(IdOk, probe.DoModal());
    EXPECT_EQ(0, model.PumpMessages());
    EXPECT_EQ(2, probe.messages);
    ASSERT_EQ(2u, model.messageBoxes.size());
    EXPECT_EQ(MessageIconExclamation, model.messageBoxes[0].flags);
    EXPECT_EQ(Template, model.messageBoxes[0].ownerTemplate);
}

TEST_F(ModelTest, ADisabledOrMissingControlCannotBePressed)
{
    Probe probe;
    DialogModel().templates[Template] = {{IdOk, ModelButton, false, true}, {IdCancel, ModelButton}};
    DialogModel().sessions[Template] = [&](CModelWindow& window) {
        EXPECT_FALSE(window.Press(IdOk));
        EXPECT_FALSE(window.Press(7));
        EXPECT_FALSE(window.ended);
    };
    EXPECT_EQ(IdCancel, probe.DoModal());
    DialogModel().templates.erase(Template);
    EXPECT_EQ(-1, probe.DoModal());
}

}   // namespace
