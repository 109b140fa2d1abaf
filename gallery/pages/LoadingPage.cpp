#include "gallery/GalleryWindow.h"
#include "gallery/ShownDialog.h"
#include "gallery/pages/Pages.h"

#include <atomic>
#include <cstdint>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr int kPasses = 20; // one is over at once

// The checksum of all files of a folder, worked out by a thread. Its results are read by another
// one when it is done.
class FileCheck {
public:
    explicit FileCheck(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    void ListFiles()
    {
        std::error_code failure;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(m_folder, failure)) {
            if (entry.is_regular_file(failure))
                m_files.push_back(entry.path());
        }
    }

    // Reports how many of how many readings are done after each file.
    void ReadFiles(const std::function<void(std::size_t, std::size_t)>& report)
    {
        const std::size_t all = m_files.size() * kPasses;
        for (std::size_t done = 0; done < all; ++done) {
            if (m_isStopped)
                return;
            AddFile(m_files[done % m_files.size()]);
            report(done + 1, all);
        }
        m_isDone = true;
    }

    void Stop() { m_isStopped = true; } // by any thread, after the file that is being read
    bool IsDone() const { return m_isDone; }
    std::size_t Files() const { return m_files.size(); }
    std::uint32_t Checksum() const { return m_checksum; }

private:
    void AddFile(const std::filesystem::path& file)
    {
        // FNV-1a
        std::ifstream stream(file, std::ios::binary);
        for (std::istreambuf_iterator<char> at(stream), end; at != end; ++at)
            m_checksum = (m_checksum ^ static_cast<unsigned char>(*at)) * 16777619u;
    }

    std::filesystem::path m_folder;
    std::vector<std::filesystem::path> m_files;
    std::uint32_t m_checksum = 2166136261u;
    std::atomic<bool> m_isStopped = false;
    std::atomic<bool> m_isDone = false;
};

class LoadingPage : public Page {
public:
    using Page::Page;

    int Scenes() const override { return 1; }
    void OpenScene(int) override
    {
        m_scene = std::make_unique<Shown<CommonLoadingWindow>>(
            m_open, m_open.Owner(), TextOf(L"loading.common.message"), false);
        if (m_scene->Create(m_open.Owner(), L"", WS_POPUP, WS_EX_TOOLWINDOW))
            m_scene->CWindowWnd::ShowWindow();
        Shown<LoadingWindow>::PopModeless(m_open, TextOf(L"loading.window.message"));
        m_open.PlaceSideBySide();
    }
    void CloseScene() override
    {
        m_open.CloseAll();
        m_scene.reset();
    }

protected:
    void Show() override
    {
        OnClickOf(L"loading.common", [this] { CheckModally(); });
        OnClickOf(L"loading.empty", [this] { WaitForNothing(); });
        OnClickOf(L"loading.window", [this] { CheckBesides(); });
    }
    void Hide() override
    {
        StopCheck();
        m_worker = {};
        CloseScene();
    }

private:
    using Report = std::function<void(std::size_t, std::size_t)>;

    void StartCheck()
    {
        StopCheck();
        m_check = std::make_shared<FileCheck>(CPaintManagerUI::GetResourcePath().GetData());
        ShowProgress(0, 1);
        SetText(L"loading.result", L"");
    }
    void StopCheck()
    {
        if (m_check)
            m_check->Stop();
        m_check.reset();
        m_besides.CloseAll();
    }

    // The worker touches no control: it hands what it found to the queue. The page may show
    // something else by then, or be gone.
    using Task = void (LoadingPage::*)(std::size_t, std::size_t);
    Report Queued(Task task)
    {
        return [page = weak_from_this(), check = m_check, window = GetHwnd(),
                task](std::size_t done, std::size_t all) {
            UIMainQueue::getInstance().dispatch(
                [=] {
                    const auto alive = std::static_pointer_cast<LoadingPage>(page.lock());
                    if (alive && alive->m_check == check)
                        ((*alive).*task)(done, all);
                },
                window);
        };
    }

    // Two pieces of work behind a modal window. The user may close it before they are done.
    void CheckModally()
    {
        StartCheck();
        const auto check = m_check;
        Shown<CommonLoadingWindow> loading(m_open, m_open.Owner(),
                                           TextOf(L"loading.common.message"), false);
        loading.RegitsterWaitingEvent([check] { check->ListFiles(); });
        loading.RegitsterWaitingEvent(
            [check, report = Queued(&LoadingPage::ShowProgress)] { check->ReadFiles(report); });
        loading.ShowWindow();
        if (m_check == check)
            ShowResult();
        check->Stop();
    }

    void WaitForNothing()
    {
        StopCheck();
        Shown<CommonLoadingWindow> loading(m_open, m_open.Owner(),
                                           TextOf(L"loading.common.message"), false);
        loading.ShowWindow();
        SetText(L"loading.result", TextOf(L"loading.nothing").c_str());
    }

    // Work beside a window that the page closes when it is told that the work is done.
    void CheckBesides()
    {
        StartCheck();
        Shown<LoadingWindow>::PopModeless(m_besides, TextOf(L"loading.window.message"));
        m_worker = std::jthread([check = m_check, report = Queued(&LoadingPage::ShowProgress),
                                 end = Queued(&LoadingPage::EndBesides)] {
            check->ListFiles();
            check->ReadFiles(report);
            end(0, 0);
        });
    }
    void EndBesides(std::size_t, std::size_t)
    {
        m_besides.CloseAll();
        ShowResult();
    }

    void ShowProgress(std::size_t done, std::size_t all)
    {
        if (auto* const progress = Find<CProgressUI>(L"loading.progress"))
            progress->SetValue(static_cast<int>(done * 100 / all));
        SetText(L"loading.count",
                done == 0 ? L"" : (std::to_wstring(done) + L" / " + std::to_wstring(all)).c_str());
    }

    void ShowResult()
    {
        if (!m_check->IsDone()) {
            SetText(L"loading.result", TextOf(L"loading.left").c_str());
            return;
        }
        wchar_t text[64];
        std::swprintf(text, std::size(text), L"%u: %08X", static_cast<unsigned>(m_check->Files()),
                      m_check->Checksum());
        SetText(L"loading.result", (TextOf(L"loading.files") + L" " + text).c_str());
    }

    OpenDialogs m_open{Window()};
    OpenDialogs m_besides{Window()};
    std::unique_ptr<Shown<CommonLoadingWindow>> m_scene;
    std::shared_ptr<FileCheck> m_check; // the one whose progress is shown
    std::jthread m_worker;
};

} // namespace

std::shared_ptr<Page> MakeLoadingPage(GalleryWindow& window)
{
    return std::make_shared<LoadingPage>(window);
}

} // namespace gallery
