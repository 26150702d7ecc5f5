// The drop target on a real dialog window: registration with OLE, and whole drags run
// by OLE's own drag loop over the dialog.

#include <gtest/gtest.h>

#include <windows.h>
#include <ole2.h>
#include <shlobj.h>

#include <string>
#include <vector>

#include "app/Resource.h"
#include "platform/Dialog.h"
#include "platform/DropTarget.h"
#include "tests/e2e/Controls.h"
#include "tests/e2e/Dragger.h"

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


// Answers "copy" to every drag and records what reached it.
class CRecordingTarget : public COleDropTarget {
public:
    int OnDragEnter(const void* dropFiles, std::size_t size, std::uint32_t) override
    {
        events.push_back("enter");
        if (dropFiles)
            entered.assign(static_cast<const unsigned char*>(dropFiles), static_cast<const unsigned char*>(dropFiles) + size);
        return DropEffectCopy;
    }
    int OnDragOver(std::uint32_t) override { return DropEffectCopy; }
    void OnDragLeave() override { events.push_back("leave"); }
    bool OnDrop(int dropEffect) override
    {
        events.push_back("drop " + std::to_string(dropEffect));
        return true;
    }

    std::vector<std::string> events;
    std::vector<unsigned char> entered;
};

// Runs one drag of `bytes` over the shown dialog, the source allowing `allowed`.
class CDragDialog : public CDialog {
public:
    CDragDialog(const std::vector<unsigned char>& bytes, DWORD allowed_)
        : CDialog(IDD_LINKWRIGHT_DIALOG), data(std::string(bytes.begin(), bytes.end())), allowed(allowed_) {}

    bool OnInitDialog() override
    {
        started = StartOle();
        registered = target.Register(*this);
        QueueAppMessage();
        return true;
    }
    void OnAppMessage() override
    {
        // The button goes down on the dialog itself and comes up where it went down.
        RECT frame;
        GetWindowRect(static_cast<HWND>(Handle()), &frame);
        const POINT point{(frame.left + frame.right) / 2, frame.top + 40};
        e2e::CHandDrag hand(point, point);
        if (e2e::SendPointer(point) && e2e::SendPointer(point, MOUSEEVENTF_LEFTDOWN))
            result = DoDragDrop(&data, &hand, allowed, &effect);
        target.Revoke();
        if (started == S_OK || started == S_FALSE)
            StopOle();
        EndDialog(IdCancel);
    }

    e2e::CFileData data;
    DWORD allowed;
    CRecordingTarget target;
    HRESULT started = E_FAIL;
    bool registered = false;
    HRESULT result = E_FAIL;
    DWORD effect = 0;
};

std::vector<unsigned char> DropFilesOf(const wchar_t* names, std::size_t units)
{
    DROPFILES header = {};
    header.pFiles = sizeof(header);
    header.fWide = TRUE;
    std::vector<unsigned char> bytes(sizeof(header) + units * sizeof(wchar_t));
    memcpy(bytes.data(), &header, sizeof(header));
    memcpy(bytes.data() + sizeof(header), names, units * sizeof(wchar_t));
    return bytes;
}

const wchar_t TwoNames[] = L"C:\\Games\\Game.lnk\0C:\\Other.lnk\0";

TEST(DropTargetWine, DragHandsOverTheBlockAndDropsWithTheLastEffect)
{
    std::vector<unsigned char> bytes = DropFilesOf(TwoNames, sizeof(TwoNames) / sizeof(wchar_t));
    CDragDialog dialog(bytes, DROPEFFECT_COPY | DROPEFFECT_LINK);
    EXPECT_EQ(dialog.DoModal(), IdCancel);
    ASSERT_TRUE(dialog.registered);
    EXPECT_EQ(dialog.result, DRAGDROP_S_DROP);
    EXPECT_EQ(dialog.effect, static_cast<DWORD>(DROPEFFECT_COPY));
    ASSERT_FALSE(dialog.target.events.empty());
    EXPECT_EQ(dialog.target.events.front(), "enter");
    EXPECT_EQ(dialog.target.events.back(), "drop 1");
    // The block may have been rounded up in size; its start is ours.
    ASSERT_GE(dialog.target.entered.size(), bytes.size());
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), dialog.target.entered.begin()));
}

// "Copy" is not among what the source allows, so the target's answer comes to nothing
// and the drag ends without a drop.
TEST(DropTargetWine, AnEffectTheSourceDoesNotAllowIsNoDrop)
{
    std::vector<unsigned char> bytes = DropFilesOf(TwoNames, sizeof(TwoNames) / sizeof(wchar_t));
    CDragDialog dialog(bytes, DROPEFFECT_MOVE);
    EXPECT_EQ(dialog.DoModal(), IdCancel);
    ASSERT_TRUE(dialog.registered);
    EXPECT_EQ(dialog.effect, static_cast<DWORD>(DROPEFFECT_NONE));
    ASSERT_FALSE(dialog.target.events.empty());
    EXPECT_EQ(dialog.target.events.front(), "enter");
    EXPECT_EQ(dialog.target.events.back(), "leave");
}

}   // namespace
