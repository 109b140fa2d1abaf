#include "support/ControlHost.h"
#include "support/ObjectCounters.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace DuiLib;

namespace {

// Skins on disk that cannot be used.
class BrokenSkinTest : public testing::Test {
protected:
    BrokenSkinTest()
    {
        CPaintManagerUI::SetResourcePath(folder.Path().c_str());
        CPaintManagerUI::SetLastErrorText(L"");
    }

    // Null, with a reason that names the file.
    void ExpectFailure(const wchar_t* reason)
    {
        CDialogBuilder builder;
        EXPECT_EQ(builder.Create(L"a.xml", nullptr, nullptr, &host.Manager()), nullptr);
        EXPECT_EQ(std::wstring(CPaintManagerUI::GetLastErrorText()), reason);
    }

    void Write(std::string_view bytes) { folder.Write(L"a.xml", bytes); }

    test::ControlHost host{100, 50};
    test::TempFolder folder;
};

std::string Utf16(std::wstring_view text)
{
    std::string bytes = "\xFF\xFE";
    for (const wchar_t ch : text)
        bytes += {static_cast<char>(ch & 0xFF), static_cast<char>(ch >> 8)};
    return bytes;
}

} // namespace

TEST_F(BrokenSkinTest, MissingFile)
{
    ExpectFailure(L"a.xml: the file does not exist");
}

TEST_F(BrokenSkinTest, EmptyFile)
{
    Write("");
    ExpectFailure(L"a.xml: the file is empty");
}

TEST_F(BrokenSkinTest, OnlyComments)
{
    Write("<!-- one -->\r\n<!-- two -->\r\n");
    ExpectFailure(L"a.xml(3,1): there is no element");
}

TEST_F(BrokenSkinTest, BinaryFile)
{
    std::string bytes = "\x89PNG\r\n\x1A\n";
    for (int i = 0; i < 5000; ++i)
        bytes += static_cast<char>(i * 37 >> 3);
    Write(bytes);
    ExpectFailure(L"a.xml(1,1): text outside the root element");
}

TEST_F(BrokenSkinTest, ZerosOnly)
{
    Write(std::string(5000, '\0'));
    ExpectFailure(L"a.xml(1,1): a zero character in the text");
}

TEST_F(BrokenSkinTest, FiftyMegabytes)
{
    Write(std::string(50'000'000, ' '));
    ExpectFailure(L"a.xml: the file is larger than 4194304 bytes");
}

TEST_F(BrokenSkinTest, UnclosedElement)
{
    Write("<Window>\n  <VBox>\n    <Label/>\n</Window>");
    ExpectFailure(L"a.xml(4,1): the closing tag \"Window\" does not match \"VBox\" of line 2");
}

TEST_F(BrokenSkinTest, MissingQuote)
{
    Write("<Window>\n  <Label text=\"a height=\"3\"/>\n</Window>");
    ExpectFailure(L"a.xml(2,26): the attribute \"3\" of \"Label\" has no value");
}

TEST_F(BrokenSkinTest, TruncatedUtf16)
{
    auto bytes = Utf16(L"<Window><Label/></Window>");
    bytes.pop_back();
    Write(bytes);
    ExpectFailure(L"a.xml: the UTF-16 text ends in the middle of a character");
}

TEST_F(BrokenSkinTest, EveryTruncationFailsReadably)
{
    const std::string whole =
        test::Utf8(L"\xFEFF<?xml version=\"1.0\"?><Window size=\"10,10\"><!-- 注释 -->"
                   L"<VBox><Label text=\"按钮 &lt;\"/></VBox></Window>");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        CPaintManagerUI::SetLastErrorText(L"");
        Write(whole.substr(0, size));
        EXPECT_EQ(CDialogBuilder().Create(L"a.xml", nullptr, nullptr, &host.Manager()), nullptr);
        EXPECT_EQ(std::wstring(CPaintManagerUI::GetLastErrorText()).substr(0, 5), L"a.xml");
    }
    Write(whole);
    const std::unique_ptr<CControlUI> root(
        CDialogBuilder().Create(L"a.xml", nullptr, nullptr, &host.Manager()));
    EXPECT_NE(root, nullptr);
}

TEST_F(BrokenSkinTest, EveryDamagedByteIsSurvived)
{
    const std::string whole =
        "<Window size=\"10,10\" caption=\"0,0,0,9\"><Font id=\"1\" name=\"Arial\" size=\"9\"/>"
        "<VBox inset=\"1,2,3,4\" bkcolor=\"#FF00FF00\"><Label text=\"a\" font=\"1\"/>"
        "<Button width=\"10\" padding=\"1,1,1,1\" visible=\"false\"/></VBox></Window>";
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char ch : {'<', '>', '"', '&', '\0', '\xFF', '9'}) {
            auto damaged = whole;
            damaged[at] = ch;
            CMarkup markup;
            const bool parsed = markup.LoadFromMem(reinterpret_cast<BYTE*>(damaged.data()),
                                                   static_cast<DWORD>(damaged.size()));
            // Whatever is left of it builds, or says why not.
            const std::unique_ptr<CControlUI> root(CDialogBuilder().Create(
                std::wstring(damaged.begin(), damaged.end()).c_str(), nullptr));
            if (root == nullptr) {
                EXPECT_STRNE(CPaintManagerUI::GetLastErrorText(), L"");
            } else if (ch != '\0' && ch != '\xFF') {
                EXPECT_TRUE(parsed) << at;
            }
        }
    }
}

TEST_F(BrokenSkinTest, ABadColourIsReadLenientlyAndNamed)
{
    for (const char* colour : {"red", "#GG", "#FF00FF00FF", "1 2"}) {
        CPaintManagerUI::SetLastErrorText(L"");
        Write(std::string("<Window>\n  <Label text=\"a\" bkcolor=\"") + colour + "\"/></Window>");
        const std::unique_ptr<CControlUI> root(
            CDialogBuilder().Create(L"a.xml", nullptr, nullptr, &host.Manager()));
        ASSERT_NE(root, nullptr);
        EXPECT_EQ(root->GetText(), L"a");
        EXPECT_EQ(test::Utf8(CPaintManagerUI::GetLastErrorText().GetData()),
                  std::string("a.xml(2,3): bkcolor: \"") + colour + "\" is not a colour");
    }
}

TEST_F(BrokenSkinTest, AGoodColourLeavesNoReason)
{
    for (const char* colour : {"", "#FF112233", "FF112233", " #112233 ", "0"}) {
        Write(std::string("<Window><Label bkcolor=\"") + colour + "\"/></Window>");
        const std::unique_ptr<CControlUI> root(
            CDialogBuilder().Create(L"a.xml", nullptr, nullptr, &host.Manager()));
        EXPECT_TRUE(CPaintManagerUI::GetLastErrorText().IsEmpty()) << colour;
    }
}

TEST_F(BrokenSkinTest, ABadColourOfTheWindowOrSetLaterIsNamedToo)
{
    Write("<Window defaultfontcolor=\"blue\"><Control/></Window>");
    const std::unique_ptr<CControlUI> root(
        CDialogBuilder().Create(L"a.xml", nullptr, nullptr, &host.Manager()));
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(),
                 L"a.xml(1,1): defaultfontcolor: \"blue\" is not a colour");
    root->SetAttribute(L"bordercolor", L"dark");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(), L"bordercolor: \"dark\" is not a colour");
}

TEST_F(BrokenSkinTest, NonsenseInAttributesIsReadLeniently)
{
    const wchar_t* const nonsense[] = {L"",
                                       L"x",
                                       L"-1",
                                       L"1",
                                       L"1,",
                                       L"1,2,3",
                                       L"1,2,3,4,5,6",
                                       L"99999999999999999999",
                                       L"-99999999999999999999",
                                       L"#",
                                       L"#GG",
                                       L"#FFFFFFFFFFFFFFFFF",
                                       L",,,,",
                                       L"   ",
                                       L"true,false",
                                       L"file='",
                                       L"file='a' dest='",
                                       L"'",
                                       L"%s%n%s"};
    const wchar_t* const attributes[] = {L"pos",
                                         L"padding",
                                         L"bkcolor",
                                         L"bkcolor2",
                                         L"bkimage",
                                         L"forecolor",
                                         L"foreimage",
                                         L"bordersize",
                                         L"bordercolor",
                                         L"borderround",
                                         L"leftbordersize",
                                         L"width",
                                         L"height",
                                         L"minwidth",
                                         L"maxwidth",
                                         L"minheight",
                                         L"maxheight",
                                         L"float",
                                         L"visible",
                                         L"enabled",
                                         L"mouse",
                                         L"keyboard",
                                         L"tooltip",
                                         L"tooltipsize",
                                         L"shortcut",
                                         L"menu",
                                         L"cursor",
                                         L"font",
                                         L"textcolor",
                                         L"textpadding",
                                         L"align",
                                         L"valign",
                                         L"endellipsis",
                                         L"inset",
                                         L"childpadding",
                                         L"vscrollbar",
                                         L"vscrollbarstyle",
                                         L"hscrollbarstyle",
                                         L"childalign",
                                         L"childvalign",
                                         L"sepheight",
                                         L"sepwidth",
                                         L"itemsize",
                                         L"columns",
                                         L"selectedid",
                                         L"normalimage",
                                         L"hotimage",
                                         L"group",
                                         L"selected",
                                         L"min",
                                         L"max",
                                         L"value",
                                         L"range",
                                         L"style",
                                         L"colorhsl",
                                         L"userdata",
                                         L"name",
                                         L"text"};
    for (const wchar_t* value : nonsense) {
        std::wstring skin = L"<Window size=\"" + std::wstring(value) + L"\" caption=\"" + value +
                            L"\" opacity=\"" + value + L"\"><VBox><VScrollBar/>";
        for (const wchar_t* element :
             {L"Control", L"Label", L"Text", L"Button", L"Option", L"CheckBox", L"Progress",
              L"ScrollBar", L"VBox", L"HBox", L"TileBox", L"TabBox", L"Box"}) {
            skin += std::wstring(L"<") + element;
            for (const wchar_t* attribute : attributes)
                skin += L" " + std::wstring(attribute) + L"=\"" + value + L"\"";
            skin += L"/>";
        }
        skin += L"</VBox></Window>";
        SCOPED_TRACE(test::Utf8(value));
        test::ControlHost fresh(60, 40);
        EXPECT_NE(fresh.Load(skin.c_str()), nullptr);
        fresh.Paint();
    }
}

TEST_F(BrokenSkinTest, FailuresLeaveNothingBehind)
{
    const auto fail = [this] {
        for (const char* text : {"<Window><VBox><Label/>", "<Window><VBox><Foo/></VBox></Window",
                                 "<Window><Include source=\"none.xml\"/></Window>"}) {
            Write(text);
            delete CDialogBuilder().Create(L"a.xml", nullptr);
        }
        std::wstring deep = L"<Window>";
        for (int i = 0; i < 300; ++i)
            deep += L"<VBox>";
        for (int i = 0; i < 300; ++i)
            deep += L"</VBox>";
        EXPECT_EQ(CDialogBuilder().Create((deep + L"</Window>").c_str(), nullptr), nullptr);
    };
    fail();
    CPaintManagerUI::SetLastErrorText(L"");
    const int before = test::HeapBlocks();
    const int gdiBefore = test::GdiObjects();
    for (int i = 0; i < 3; ++i)
        fail();
    CPaintManagerUI::SetLastErrorText(L"");
    EXPECT_EQ(test::HeapBlocks(), before);
    EXPECT_EQ(test::GdiObjects(), gdiBefore);
}
