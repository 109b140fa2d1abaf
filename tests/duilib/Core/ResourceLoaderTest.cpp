#include "support/TempFolder.h"

#include <UIlib.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

using DuiLib::CControlUI;
using DuiLib::CDialogBuilder;
using DuiLib::CMarkup;
using DuiLib::CPaintManagerUI;
using DuiLib::CRenderEngine;
using DuiLib::STRINGorID;
using DuiLib::TImageInfo;

namespace {

struct FreeImageInfo {
    void operator()(TImageInfo* image) const { CRenderEngine::FreeImage(image); }
};
using Image = std::unique_ptr<TImageInfo, FreeImageInfo>;

Image Load(const wchar_t* name, const wchar_t* type = nullptr, HINSTANCE module = nullptr)
{
    return Image(CRenderEngine::LoadImage(STRINGorID(name), type, 0, module));
}

// The bytes of the red picture among the program's resources.
std::string DotPng()
{
    const HRSRC found = ::FindResourceW(nullptr, MAKEINTRESOURCEW(103), L"PNG");
    const auto* const data =
        static_cast<const char*>(::LockResource(::LoadResource(nullptr, found)));
    return {data, ::SizeofResource(nullptr, found)};
}

// The bytes of the archive among them, which holds main.xml and pictures/dot.png.
std::string SkinZip()
{
    const HRSRC found = ::FindResourceW(nullptr, MAKEINTRESOURCEW(104), L"ZIP");
    const auto* const data =
        static_cast<const char*>(::LockResource(::LoadResource(nullptr, found)));
    return {data, ::SizeofResource(nullptr, found)};
}

std::string Skin(const char* text)
{
    return std::string("<Window><Label text=\"") + text + "\"/></Window>";
}

std::wstring TextOfSkin(STRINGorID source, const wchar_t* type = nullptr)
{
    const std::unique_ptr<CControlUI> control(CDialogBuilder().Create(source, type));
    return control ? std::wstring(control->GetText()) : L"(none)";
}

class ResourceLoaderTest : public testing::Test {
protected:
    ResourceLoaderTest() { CPaintManagerUI::SetResourcePath(folder.Path().c_str()); }
    ~ResourceLoaderTest() override
    {
        CPaintManagerUI::SetResourceZip(L"");
        CPaintManagerUI::SetResourceDll(nullptr);
    }

    test::TempFolder folder;
};

} // namespace

TEST_F(ResourceLoaderTest, FileStandsBelowTheResourcePath)
{
    folder.Write(L"pictures/dot.png", DotPng());
    const Image image = Load(L"pictures\\dot.png");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 2);
    EXPECT_EQ(image->nY, 2);
}

TEST_F(ResourceLoaderTest, PictureFallsBackToThePlainPath)
{
    test::TempFolder elsewhere;
    const auto path = elsewhere.Write(L"dot.png", DotPng());
    EXPECT_NE(Load(path.c_str()), nullptr);
    EXPECT_EQ(Load((path + L"x").c_str()), nullptr);
}

TEST_F(ResourceLoaderTest, PictureFallsBackToThePlainPathAlsoFromAnArchive)
{
    auto zip = SkinZip();
    CPaintManagerUI::SetResourceZip(zip.data(), static_cast<unsigned int>(zip.size()));
    test::TempFolder elsewhere;
    const auto path = elsewhere.Write(L"dot.png", DotPng());
    EXPECT_NE(Load(path.c_str()), nullptr);
}

TEST_F(ResourceLoaderTest, SkinDoesNotFallBackToThePlainPath)
{
    test::TempFolder elsewhere;
    const auto path = elsewhere.Write(L"a.xml", Skin("text"));
    EXPECT_EQ(TextOfSkin(path.c_str()), L"(none)");
    CPaintManagerUI::SetResourcePath(L"");
    EXPECT_EQ(TextOfSkin(path.c_str()), L"text");
}

TEST_F(ResourceLoaderTest, ArchiveReplacesTheFolder)
{
    folder.Write(L"main.xml", Skin("from the folder"));
    auto zip = SkinZip();
    CPaintManagerUI::SetResourceZip(zip.data(), static_cast<unsigned int>(zip.size()));
    EXPECT_EQ(TextOfSkin(L"main.xml"), L"from the archive");
    EXPECT_NE(Load(L"Pictures\\Dot.png"), nullptr);

    CPaintManagerUI::SetResourceZip(L"");
    EXPECT_EQ(TextOfSkin(L"main.xml"), L"from the folder");
}

TEST_F(ResourceLoaderTest, ArchiveIsNamedBelowTheResourcePath)
{
    folder.Write(L"skins/skin.zip", SkinZip());
    CPaintManagerUI::SetResourceZip(L"skins\\skin.zip", true);
    EXPECT_EQ(TextOfSkin(L"main.xml"), L"from the archive");
    EXPECT_NE(CPaintManagerUI::GetResourceZipHandle(), nullptr);
    EXPECT_STREQ(CPaintManagerUI::GetResourceZip(), L"skins\\skin.zip");
}

TEST_F(ResourceLoaderTest, TypeMeansAResourceOfTheModule)
{
    EXPECT_NE(Load(L"103", L"PNG"), nullptr);
    EXPECT_NE(Load(L"103.png", L"PNG"), nullptr);
    EXPECT_NE(Load(L"103", L"PNG", ::GetModuleHandleW(nullptr)), nullptr);
    EXPECT_EQ(Load(L"103", L"PNG", ::GetModuleHandleW(L"DuiLib.dll")), nullptr);
    EXPECT_EQ(Load(L"999", L"PNG"), nullptr);
    EXPECT_EQ(Load(L"103", L"XML"), nullptr);
}

TEST_F(ResourceLoaderTest, NumberIsAResourceToo)
{
    EXPECT_NE(Image(CRenderEngine::LoadImage(STRINGorID(103u), L"PNG", 0)), nullptr);
    EXPECT_EQ(Image(CRenderEngine::LoadImage(STRINGorID(103u), nullptr, 0)), nullptr);
}

TEST_F(ResourceLoaderTest, ResourceModuleIsUsedWithoutAModule)
{
    CPaintManagerUI::SetResourceDll(::GetModuleHandleW(L"DuiLib.dll"));
    EXPECT_EQ(Load(L"103", L"PNG"), nullptr);
    CPaintManagerUI::SetResourceDll(::GetModuleHandleW(nullptr));
    EXPECT_NE(Load(L"103", L"PNG"), nullptr);
}

TEST_F(ResourceLoaderTest, SkinIsBuiltFromAResource)
{
    const std::unique_ptr<CControlUI> root(CDialogBuilder().Create(STRINGorID(101u), L"XML"));
    ASSERT_NE(root, nullptr);
    EXPECT_STREQ(root->GetName(), L"main");
}

TEST_F(ResourceLoaderTest, IncludeInAResourceNamesAnotherResource)
{
    const std::unique_ptr<CControlUI> root(CDialogBuilder().Create(STRINGorID(101u), L"XML"));
    ASSERT_NE(root, nullptr);
    auto* const container = static_cast<DuiLib::CContainerUI*>(root->GetInterface(L"Container"));
    ASSERT_EQ(container->GetCount(), 3);
    EXPECT_STREQ(container->GetItemAt(0)->GetText(), L"Grüße");
    EXPECT_STREQ(container->GetItemAt(2)->GetText(), L"part");
}

TEST_F(ResourceLoaderTest, ResourceTypeMayBeANumber)
{
    EXPECT_EQ(TextOfSkin(STRINGorID(106u), RT_RCDATA), L"part");
}

TEST_F(ResourceLoaderTest, BuilderTakesTheModuleItWasGiven)
{
    CDialogBuilder builder;
    builder.SetInstance(::GetModuleHandleW(L"DuiLib.dll"));
    EXPECT_EQ(builder.Create(STRINGorID(102u), L"XML"), nullptr);
    builder.SetInstance(::GetModuleHandleW(nullptr));
    const std::unique_ptr<CControlUI> control(builder.Create(STRINGorID(102u), L"XML"));
    EXPECT_NE(control, nullptr);
}

TEST_F(ResourceLoaderTest, MissingResourceFailsReadably)
{
    EXPECT_EQ(TextOfSkin(STRINGorID(999u), L"XML"), L"(none)");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(),
                 L"resource 999: the module has no such resource");
    EXPECT_EQ(TextOfSkin(STRINGorID(101u)), L"(none)");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(),
                 L"resource 101: a number needs a resource type");
}

TEST_F(ResourceLoaderTest, FolderIsNoFile)
{
    folder.Write(L"sub/a.xml", Skin("a"));
    EXPECT_EQ(TextOfSkin(L"sub"), L"(none)");
    EXPECT_EQ(TextOfSkin(L"sub\\"), L"(none)");
    EXPECT_EQ(TextOfSkin(L"a|b?.xml"), L"(none)");
}
