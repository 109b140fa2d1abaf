#include "tests/quillet/dialogs/Popups.h"

#include <string>

using namespace DuiLib;

namespace {

class TestLoadingWindow : public LoadingWindow {
public:
    explicit TestLoadingWindow(std::wstring text) : LoadingWindow(std::move(text)) {}
    ~TestLoadingWindow() override
    {
        if (m_hWnd)
            ::DestroyWindow(m_hWnd);
    }
    HWND Make(HWND parent) { return Create(parent, L"", WS_POPUP, 0, 0, 0, 0, 0); }

    using LoadingWindow::GetSkinFile;
    using LoadingWindow::m_hMainWnd;
    using LoadingWindow::m_hWnd;
    using LoadingWindow::m_pm;
    using LoadingWindow::m_strText;
    using LoadingWindow::OnClickItem;

    bool initialised = false; // to the end

protected:
    void InitWindow() override
    {
        LoadingWindow::InitWindow();
        initialised = true;
    }
};

class LoadingWindowTest : public test::PopupTest {
protected:
    LoadingWindowTest()
    {
        skins.Write(L"Loading.xml", test::DialogSkins::Skin(
                                        L"<Label name=\"loadingText\" text=\"skin\" height=\"30\"/>"
                                        L"<Button name=\"loadingGif\" text=\"gif\" height=\"30\"/>"
                                        L"<Button name=\"close\" height=\"30\"/>"));
    }
};

TEST_F(LoadingWindowTest, ShowsItsText)
{
    TestLoadingWindow loading(L"Loading contacts");
    const HWND window = loading.Make(owner);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(test::ClassOf(window), L"LoadingWindow");
    EXPECT_STREQ(loading.GetSkinFile(), L"Loading.xml");
    EXPECT_EQ(test::TextOf(window, L"loadingText"), L"Loading contacts");
    EXPECT_EQ(test::TextOf(window, L"loadingGif"), L"gif");
}

TEST_F(LoadingWindowTest, TheTextIsCopied)
{
    std::wstring text = L"Before";
    const TestLoadingWindow loading(text);
    text = L"After";
    EXPECT_EQ(loading.m_strText, L"Before");
}

// The text is set whatever it is: the other dialogs keep the skin's instead of an empty one.
TEST_F(LoadingWindowTest, AnEmptyTextReplacesTheSkins)
{
    TestLoadingWindow loading(L"");
    const HWND window = loading.Make(owner);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(test::TextOf(window, L"loadingText"), L"");
}

TEST_F(LoadingWindowTest, ASkinWithoutItsControlsDoesNoHarm)
{
    skins.Write(L"Loading.xml", test::DialogSkins::Skin(L""));
    TestLoadingWindow loading(L"Loading");
    EXPECT_NE(loading.Make(owner), nullptr);
    EXPECT_TRUE(loading.initialised);
}

TEST_F(LoadingWindowTest, KeepsTheMainWindow)
{
    TestLoadingWindow loading(L"Loading");
    EXPECT_EQ(loading.m_hMainWnd, nullptr);
    loading.SetMainWnd(owner);
    EXPECT_EQ(loading.m_hMainWnd, owner.GetHWND());
    const HWND window = loading.Make(nullptr);
    EXPECT_EQ(::GetWindow(window, GW_OWNER), nullptr);
    loading.SetMainWnd(nullptr);
    EXPECT_EQ(loading.m_hMainWnd, nullptr);
    EXPECT_TRUE(::IsWindow(window));
}

TEST_F(LoadingWindowTest, ClicksDoNothing)
{
    TestLoadingWindow loading(L"Loading");
    const HWND window = loading.Make(owner);
    loading.ShowWindow();
    for (const wchar_t* const name : {L"loadingGif", L"close"})
        test::ClickControl(window, name);
    test::Pump();
    EXPECT_TRUE(::IsWindow(window));

    TNotifyUI click{};
    click.sType = DUI_MSGTYPE_CLICK;
    click.pSender = test::ControlOf(window, L"close");
    EXPECT_FALSE(loading.OnClickItem(&click));
    test::Pump();
    EXPECT_TRUE(::IsWindow(window));
    EXPECT_EQ(test::TextOf(window, L"loadingText"), L"Loading");
}

TEST_F(LoadingWindowTest, ManyOpeningsLeaveNothingBehind)
{
    test::ExpectNoGrowth(500, [this] {
        TestLoadingWindow loading(L"Loading");
        const HWND window = loading.Make(owner);
        loading.ShowWindow();
        loading.Close();
        test::Pump();
        ASSERT_FALSE(::IsWindow(window));
    });
}

} // namespace
