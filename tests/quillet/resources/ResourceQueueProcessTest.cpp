#include "quillet/resources/ThumbnailKit.h"

#include "quillet/frame/FreshProcess.h"

#include <cstdlib>

namespace test {
namespace {

using DuiLib::ResourceQueue;

using ShellIconTest = ThumbnailTest;

TEST_F(ShellIconTest, IsWhatTheShellShowsForAnExistingFile)
{
    CacheCalls calls;
    const std::wstring path = folder.Write(L"a.txt", "text");
    const HICON icon = ResourceQueue::GetDefaultIcon(path.c_str());
    EXPECT_NE(icon, nullptr);
    EXPECT_TRUE(::DestroyIcon(icon));
    EXPECT_EQ(ResourceQueue::GetDefaultIcon((folder / L"missing.txt").c_str()), nullptr);
    const HICON folderIcon = ResourceQueue::GetDefaultIcon(folder.Path().c_str());
    EXPECT_NE(folderIcon, nullptr);
    EXPECT_TRUE(::DestroyIcon(folderIcon));
    EXPECT_EQ(calls.answered, (std::vector<HICON>{icon, nullptr, folderIcon}));
    EXPECT_EQ(ResourceQueue::GetDefaultIcon(nullptr), nullptr);
}

TEST_F(ShellIconTest, IsAskedForWithAnAttributeThatHasNoEffect)
{
    CacheCalls calls;
    const std::wstring missing = folder / L"missing";
    EXPECT_EQ(ResourceQueue::GetDefaultIcon(missing.c_str()), nullptr)
        << "an icon for any folder of that name";
    const CacheCalls::IconQuestion wanted{missing, FILE_ATTRIBUTE_DIRECTORY, sizeof(SHFILEINFOW),
                                          SHGFI_ICON | SHGFI_DISPLAYNAME};
    ASSERT_EQ(calls.asked.size(), 1u);
    EXPECT_EQ(calls.asked[0], wanted);
}

TEST(DefaultIconTest, PreparesOnceAndHoldsNoImageList)
{
    EXPECT_EXIT(RunAndExit([] {
                    CacheCalls calls;
                    calls.countedIcons = true;
                    {
                        const TempFolder folder;
                        const std::wstring path = folder.Write(L"a", "");
                        EXPECT_NE(ResourceQueue::GetDefaultIcon(path.c_str()), nullptr);
                        EXPECT_NE(ResourceQueue::GetDefaultIcon(path.c_str()), nullptr);
                    }
                    EXPECT_EQ(ResourceQueue::GetDefaultIcon(L"missing"), nullptr);
                    EXPECT_EQ(calls.parsed,
                              std::vector<std::wstring>{L"{46EB5926-582E-4017-9FDF-E8998DAA0950}"});
                    EXPECT_EQ(calls.imageLists, 1);
                    EXPECT_FALSE(calls.imageListsWanted);
                    // Nothing was put in place of the icons.
                    EXPECT_TRUE(calls.destroyed.empty());
                }),
                testing::ExitedWithCode(0), "");
}

// What happens while the process ends, written by the system alone.
void Say(char letter)
{
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), &letter, 1, &written, nullptr);
}

const ImportHook* closeHandle = nullptr;
const ImportHook* destroyIcon = nullptr;
const ImportHook* disposeImage = nullptr;

BOOL WINAPI SayClose(HANDLE handle)
{
    if (!handle)
        Say('C');
    return closeHandle->Original<decltype(::CloseHandle)>()(handle);
}

BOOL WINAPI SayIcon(HICON icon)
{
    Say(icon ? 'I' : 'i');
    return destroyIcon->Original<decltype(::DestroyIcon)>()(icon);
}

Gdiplus::Status WINAPI SayImage(Gdiplus::GpImage* image)
{
    Say(image ? 'P' : 'p');
    return disposeImage->Original<decltype(Gdiplus::DllExports::GdipDisposeImage)>()(image);
}

// Never undone, as the process ends with them.
void SayWhatEnds()
{
    static constexpr const wchar_t* kModule = L"Quillet.dll";
    closeHandle = new ImportHook(kModule, "KERNEL32.dll", "CloseHandle", &SayClose);
    destroyIcon = new ImportHook(kModule, "USER32.dll", "DestroyIcon", &SayIcon);
    disposeImage = new ImportHook(kModule, "gdiplus.dll", "GdipDisposeImage", &SayImage);
}

// Runs in a process of its own, which ends as every program does once its files are removed.
template <class Body>
[[noreturn]] void FillAndExit(Body fill)
{
    {
        const DuiLib::CPaintManagerUI manager;
        const TempFolder folder;
        fill(*ResourceQueue::GetInstance(), folder);
    }
    std::exit(0);
}

TEST(EndOfTheProcessTest, ClosesAHandleThatNobodySetAndFreesEveryEntry)
{
    EXPECT_EXIT(FillAndExit([](ResourceQueue& queue, const TempFolder& folder) {
                    for (const auto* name : {L"a.png", L"b.png"}) {
                        EXPECT_TRUE(Quarters(8, 8).Save(folder / name));
                        queue.GetResource((folder / name).c_str());
                    }
                    Say('[');
                    SayWhatEnds();
                }),
                testing::ExitedWithCode(0), "\\[CiPiP$");
    EXPECT_EXIT(FillAndExit([](ResourceQueue& queue, const TempFolder& folder) {
                    queue.GetResource(folder.Write(L"a.txt", "text").c_str());
                    Say('[');
                    SayWhatEnds();
                }),
                testing::ExitedWithCode(0), "\\[CIp$");
}

TEST(EndOfTheProcessTest, IsCleanWithAFullCache)
{
    EXPECT_EXIT(FillAndExit([](ResourceQueue& queue, const TempFolder& folder) {
                    for (int index = 0; index < 250; ++index) {
                        const std::wstring path = folder.Write(std::to_wstring(index), "text");
                        if (index % 2) {
                            EXPECT_TRUE(Quarters(2, 2).Save(path));
                        }
                        queue.GetResource(path.c_str());
                    }
                }),
                testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace test
