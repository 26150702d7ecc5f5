// Registration of the drop target with OLE, on a real dialog window.

#include <gtest/gtest.h>

#include "app/Resource.h"
#include "platform/Dialog.h"
#include "platform/DropTarget.h"

namespace {

class CRegisteringDialog : public CDialog {
public:
    CRegisteringDialog() : CDialog(IDD_LINKWRIGHT_DIALOG) {}

    bool OnInitDialog() override
    {
        withoutOle = target.Register(*this);
        std::int32_t started = StartOle();
        EXPECT_TRUE(started == 0 || started == 1) << started;
        first = target.Register(*this);
        second = target.Register(*this);
        target.Revoke();
        target.Revoke();
        again = target.Register(*this);
        target.Revoke();
        StopOle();
        EndDialog(IdCancel);
        return true;
    }

    COleDropTarget target;
    bool withoutOle = true;
    bool first = false;
    bool second = true;
    bool again = false;
};

TEST(DropTargetWine, RegistersOncePerWindowAndOnlyWithOle)
{
    CRegisteringDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IdCancel);
    EXPECT_FALSE(dialog.withoutOle);
    EXPECT_TRUE(dialog.first);
    EXPECT_FALSE(dialog.second);
    EXPECT_TRUE(dialog.again);
}

}   // namespace
