#include "ZipWriter.h"

#include "support/ImportHook.h"
#include "support/TempFolder.h"

#include <UIlib.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using DuiLib::CMarkup;
using DuiLib::CPaintManagerUI;
using test::ZipWriter;

namespace {

constexpr auto kDamaged = L"the file in the archive is damaged";

void Use(std::string archive, const wchar_t* password = nullptr)
{
    CPaintManagerUI::SetResourceZip(archive.data(), static_cast<unsigned int>(archive.size()),
                                    password);
}

std::string Skin(const std::string& value)
{
    return "<a v=\"" + value + "\"/>";
}

// The attribute of the skin under that name, or why it cannot be read.
std::wstring Read(const wchar_t* name)
{
    CMarkup markup;
    if (markup.LoadFromFile(name))
        return markup.GetRoot().GetAttributeValue(L"v");
    wchar_t reason[200];
    markup.GetLastErrorMessage(reason, 200);
    return L"! " + std::wstring(reason);
}

std::string OneFile(ZipWriter::Item item)
{
    item.name = "a.xml";
    if (item.content.empty())
        item.content = Skin("value");
    ZipWriter zip;
    zip.Add(std::move(item));
    return zip.Finish();
}

// Lets another thread run at the worst moment: between finding a place in a file and reading there.
BOOL WINAPI SeekAndYield(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD from)
{
    const BOOL done = ::SetFilePointerEx(file, distance, position, from);
    ::SwitchToThread();
    return done;
}

// Leaves no archive in use, so that files can be removed.
class ZipArchiveTest : public testing::Test {
protected:
    ~ZipArchiveTest() override { CPaintManagerUI::SetResourceZip(L""); }

    test::TempFolder folder;
};

} // namespace

TEST_F(ZipArchiveTest, StoredAndDeflatedFilesAreRead)
{
    ZipWriter zip;
    zip.Add({.name = "stored.xml", .content = Skin("one"), .packing = ZipWriter::Packing::Stored});
    zip.Add({.name = "deflated.xml", .content = Skin(std::string(5000, 'x'))});
    Use(zip.Finish());
    EXPECT_EQ(Read(L"stored.xml"), L"one");
    EXPECT_EQ(Read(L"deflated.xml"), std::wstring(5000, L'x'));
}

TEST_F(ZipArchiveTest, NamesAreFoundInAnyCaseWithEitherSlash)
{
    ZipWriter zip;
    zip.Add("Skins/Main/Page.xml", Skin("page"));
    zip.Add("back\\slash.xml", Skin("slash"));
    Use(zip.Finish());
    for (const wchar_t* name :
         {L"Skins/Main/Page.xml", L"skins\\main\\page.xml", L"SKINS/main\\PAGE.XML"})
        EXPECT_EQ(Read(name), L"page") << test::Utf8(name);
    EXPECT_EQ(Read(L"Back/Slash.xml"), L"slash");
}

TEST_F(ZipArchiveTest, NamesMayBeUtf8)
{
    ZipWriter zip;
    zip.Add(test::Utf8(L"皮肤/Ä.xml"), Skin("found"));
    Use(zip.Finish());
    EXPECT_EQ(Read(L"皮肤\\ä.xml"), L"found");
}

TEST_F(ZipArchiveTest, MissingFileFailsReadably)
{
    Use(OneFile({}));
    EXPECT_EQ(Read(L"b.xml"), L"! the archive has no such file");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(), L"b.xml: the archive has no such file");
}

TEST_F(ZipArchiveTest, CommentBehindTheArchiveIsSkipped)
{
    ZipWriter zip;
    zip.Add("a.xml", Skin("commented"));
    Use(zip.Finish(std::string(3000, 'c') + "PK\5\6"));
    EXPECT_EQ(Read(L"a.xml"), L"commented");
}

TEST_F(ZipArchiveTest, PasswordOpensEncryptedFiles)
{
    for (const bool sizesFollow : {false, true}) {
        for (const auto packing : {ZipWriter::Packing::Stored, ZipWriter::Packing::Deflated}) {
            Use(OneFile({.packing = packing, .password = "secret", .sizesFollow = sizesFollow}),
                L"secret");
            EXPECT_EQ(Read(L"a.xml"), L"value");
        }
    }
}

TEST_F(ZipArchiveTest, WrongOrMissingPasswordFails)
{
    const auto archive = OneFile({.password = "secret"});
    Use(archive, L"Secret");
    EXPECT_EQ(Read(L"a.xml"), L"! the password of the archive is wrong");
    Use(archive);
    EXPECT_EQ(Read(L"a.xml"), L"! the password of the archive is wrong");
}

TEST_F(ZipArchiveTest, WrongCheckSumFails)
{
    Use(OneFile({.wrongSum = 1}));
    EXPECT_EQ(Read(L"a.xml"), L"! the file in the archive is damaged");
    Use(OneFile({.packing = ZipWriter::Packing::Stored, .wrongSum = 1}));
    EXPECT_EQ(Read(L"a.xml"), std::wstring(L"! ") + kDamaged);
}

TEST_F(ZipArchiveTest, WrongSizeFails)
{
    const auto trueSize = static_cast<unsigned>(Skin("value").size());
    for (const unsigned size : {0u, 1u, trueSize - 1, trueSize + 1, 4000u}) {
        SCOPED_TRACE(size);
        Use(OneFile({.size = size}));
        EXPECT_EQ(Read(L"a.xml"), std::wstring(L"! ") + kDamaged);
        Use(OneFile({.packing = ZipWriter::Packing::Stored, .size = size}));
        EXPECT_EQ(Read(L"a.xml"), std::wstring(L"! ") + kDamaged);
    }
}

TEST_F(ZipArchiveTest, FilesThatUnpackToMoreThanTheLimitAreRefused)
{
    Use(OneFile({.content = Skin(std::string(4u * 1024u * 1024u, ' '))}));
    EXPECT_EQ(Read(L"a.xml"), L"! the file in the archive is too large");
    Use(OneFile({.size = 0xFFFFFFF0u}));
    EXPECT_EQ(Read(L"a.xml"), L"! the file in the archive is too large");
}

TEST_F(ZipArchiveTest, SizeThatNoPackingReachesIsRefused)
{
    Use(OneFile({.size = 4000000u}));
    EXPECT_EQ(Read(L"a.xml"), std::wstring(L"! ") + kDamaged);
}

TEST_F(ZipArchiveTest, UnknownPackingFails)
{
    for (const unsigned method : {1u, 9u, 12u, 14u, 93u, 99u}) {
        Use(OneFile({.method = method}));
        EXPECT_EQ(Read(L"a.xml"), L"! the file in the archive is packed in an unknown way");
    }
}

TEST_F(ZipArchiveTest, StreamThatIsNotDeflatedFails)
{
    Use(OneFile({.packing = ZipWriter::Packing::Stored, .method = 8}));
    EXPECT_EQ(Read(L"a.xml"), std::wstring(L"! ") + kDamaged);
}

TEST_F(ZipArchiveTest, EveryTruncationFails)
{
    const auto whole = OneFile({});
    for (std::size_t size = 1; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        Use(whole.substr(0, size));
        EXPECT_EQ(Read(L"a.xml").substr(0, 2), L"! ");
    }
}

TEST_F(ZipArchiveTest, EveryDamagedByteIsSurvived)
{
    const auto whole = OneFile({});
    Use(whole);
    ASSERT_EQ(Read(L"a.xml"), L"value");
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            auto damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ flip);
            Use(damaged);
            // Time stamps and versions matter to nobody; the content is never wrong.
            const auto result = Read(L"a.xml");
            EXPECT_TRUE(result == L"value" || result.starts_with(L"! ")) << at;
        }
    }
}

TEST_F(ZipArchiveTest, MemoryThatIsNoArchiveFailsInsteadOfReadingTheFolder)
{
    folder.Write(L"a.xml", std::string_view("<a v=\"file\"/>"));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    Use(std::string(100, 'x'));
    EXPECT_EQ(Read(L"a.xml"), L"! the archive in memory is damaged");
}

TEST_F(ZipArchiveTest, MemoryIsCopied)
{
    auto archive = OneFile({});
    CPaintManagerUI::SetResourceZip(archive.data(), static_cast<unsigned int>(archive.size()));
    archive.assign(archive.size(), '#');
    EXPECT_EQ(Read(L"a.xml"), L"value");
}

TEST_F(ZipArchiveTest, FileBelowTheResourcePathIsReadCachedOrNot)
{
    folder.Write(L"skin.zip", OneFile({}));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    for (const bool cached : {false, true}) {
        CPaintManagerUI::SetResourceZip(L"skin.zip", cached);
        EXPECT_EQ(CPaintManagerUI::IsCachedResourceZip(), cached);
        EXPECT_EQ(Read(L"a.xml"), L"value");
        EXPECT_EQ(Read(L"a.xml"), L"value");
    }
}

TEST_F(ZipArchiveTest, ArchiveThatIsNotCachedMayBeReplaced)
{
    folder.Write(L"skin.zip", OneFile({}));
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CPaintManagerUI::SetResourceZip(L"skin.zip");
    ASSERT_EQ(Read(L"a.xml"), L"value");
    folder.Write(L"skin.zip", OneFile({.content = Skin("other")}));
    EXPECT_EQ(Read(L"a.xml"), L"other");
}

TEST_F(ZipArchiveTest, MissingArchiveFailsReadably)
{
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CPaintManagerUI::SetResourceZip(L"none.zip");
    EXPECT_EQ(Read(L"a.xml"), L"! " + folder.Path() + L"none.zip: the archive cannot be opened");
}

TEST_F(ZipArchiveTest, ThreadsMayReadOneArchiveTogether)
{
    ZipWriter zip;
    for (int i = 0; i < 20; ++i)
        zip.Add(std::to_string(i) + ".xml", Skin(std::string(2000, static_cast<char>('a' + i))));
    folder.Write(L"skin.zip", zip.Finish());
    CPaintManagerUI::SetResourcePath(folder.Path().c_str());
    CPaintManagerUI::SetResourceZip(L"skin.zip", true);
    const test::ImportHook seeks(L"DuiLib.dll", "kernel32.dll", "SetFilePointerEx", &SeekAndYield);
    ASSERT_TRUE(seeks);

    std::atomic<int> right = 0;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&right] {
                for (int round = 0; round < 100; ++round) {
                    const int file = round % 20;
                    const auto name = std::to_wstring(file) + L".xml";
                    if (Read(name.c_str()) == std::wstring(2000, static_cast<wchar_t>(L'a' + file)))
                        ++right;
                }
            });
        }
    }
    EXPECT_EQ(right, 400);
}
