#include "gallery/MaskedDialog.h"
#include "gallery/pages/Pages.h"

#include <memory>
#include <stop_token>
#include <string>
#include <thread>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr const wchar_t* kMenu = L"menus/context.xml";

constexpr int kSteps = 20;
constexpr int kNumbersPerStep = 100'000;
constexpr UINT kTick = 1000; // milliseconds

enum Scene { kOpenMasked, kOpenMaskedWithTitle, kOpenMenu, kSceneCount };

bool IsPrime(int number)
{
    for (int divisor = 2; divisor * divisor <= number; ++divisor) {
        if (number % divisor == 0)
            return false;
    }
    return number > 1;
}

int PrimesOfStep(int step)
{
    int primes = 0;
    for (int number = step * kNumbersPerStep; number < (step + 1) * kNumbersPerStep; ++number)
        primes += IsPrime(number);
    return primes;
}

// Adds its name to the text that is broadcast.
class Listener : public Quillet::IMessage {
public:
    explicit Listener(const wchar_t* name) : m_name(name) {}

    void OnRouteMessage(int, void* param) override
    {
        auto& heard = *static_cast<std::wstring*>(param);
        heard += (heard.empty() ? L"" : L", ") + std::wstring(m_name);
    }

private:
    const wchar_t* m_name;
};

// Receivers stay registered for ever, so each is registered once in the process.
void RegisterListeners()
{
    static Listener service(L"service");
    static Listener first(L"client 1");
    static Listener second(L"client 2");
    auto& route = *Quillet::Route::GetInstance();
    static const bool firstIsIn = (route.Register(&first), true);
    static const bool serviceIsIn = (route.RegisterService(&service), true);
    static const bool secondIsIn = (route.Register(&second), true);
    static_cast<void>(firstIsIn && serviceIsIn && secondIsIn);
}

class FramePage : public Page {
public:
    using Page::Page;

    void MenuChosen(const MenuCmd& command) override
    {
        SetText(L"frame.event", CDuiString(L"OnMenuClick ") + command.szName);
    }

    int Scenes() const override { return kSceneCount; }
    void OpenScene(int scene) override
    {
        if (scene == kOpenMenu)
            OpenMenu();
        else if (m_dialog.Open(GetHwnd(), GetPaintManagerUI(), scene == kOpenMaskedWithTitle))
            m_dialog.Show();
    }
    void CloseScene() override
    {
        m_dialog.Close();
        CMenuWnd::GetGlobalContextMenuObserver().RBroadcast({1, nullptr});
    }

protected:
    void OnInit() override
    {
        m_message = GenerateMsgId();
        ListenMessage(m_message, [this](WPARAM count, LPARAM) { ShowMessages(count); });
    }

    void Show() override
    {
        OnClickOf(L"frame.start", [this] { StartWorker(); });
        OnClickOf(L"frame.broadcast", [this] { Broadcast(); });
        OnClickOf(L"frame.message", [this] { PostMessageW(m_message, ++m_posted); });
        OnClickOf(L"frame.masked", [this] { ShowMasked(false); });
        OnClickOf(L"frame.masked-title", [this] { ShowMasked(true); });
        OnClickOf(L"frame.menu", [this] { OpenMenu(); });
        EnableDragDrop(true);
        StartTimer();
        RegisterListeners();
        Broadcast();
        ShowPrimes(0, 0);
        ShowMessages(m_posted = 0);
    }
    void Hide() override
    {
        m_worker = {};
        KillTimer(m_timer);
        EnableDragDrop(false);
        CloseScene();
        CMenuWnd::DestroyMenu();
    }

    void OnMoveWnd() override { m_dialog.Follow(); }

    LRESULT OnDrag(UINT, WPARAM wParam, LPARAM, int& handled) override
    {
        return Dragged(L"OnDrag", wParam, handled);
    }
    LRESULT OnDragEnter(UINT, WPARAM wParam, LPARAM, int& handled) override
    {
        return Dragged(L"OnDragEnter", wParam, handled);
    }
    LRESULT OnDragLeave(UINT, WPARAM wParam, LPARAM, int& handled) override
    {
        return Dragged(L"OnDragLeave", wParam, handled);
    }
    LRESULT OnDragOver(UINT, WPARAM wParam, LPARAM, int& handled) override
    {
        return Dragged(L"OnDragOver", wParam, handled);
    }
    LRESULT OnDragRelease(UINT, WPARAM wParam, LPARAM, int& handled) override
    {
        return Dragged(L"OnDragRelease", wParam, handled);
    }

private:
    // The worker touches no control: it hands what it found to the queue.
    void StartWorker()
    {
        const auto work = [page = weak_from_this(), window = GetHwnd()](std::stop_token stop) {
            int primes = 0;
            for (int step = 0; step < kSteps && !stop.stop_requested(); ++step) {
                primes += PrimesOfStep(step);
                UIMainQueue::getInstance().dispatch(
                    [page, primes, done = step + 1] {
                        if (const auto alive = page.lock())
                            static_cast<FramePage&>(*alive).ShowPrimes(primes, done);
                    },
                    window);
            }
        };
        m_worker = std::jthread(work);
    }

    void ShowPrimes(int primes, int steps)
    {
        if (auto* const progress = Find<CProgressUI>(L"frame.progress"))
            progress->SetValue(steps * 100 / kSteps);
        SetText(L"frame.primes", std::to_wstring(primes).c_str());
    }

    void Broadcast()
    {
        std::wstring heard;
        Quillet::Route::GetInstance()->DispatchMessageW(0, &heard);
        SetText(L"frame.route", heard.c_str());
    }

    void ShowMessages(WPARAM count)
    {
        SetText(L"frame.messages", (L"message: " + std::to_wstring(count)).c_str());
    }

    // A timer's callback stays for ever, so it is set once and started anew.
    void StartTimer()
    {
        m_ticks = 0;
        if (m_timer)
            ::SetTimer(GetHwnd(), m_timer, kTick, nullptr);
        else
            m_timer = SetTimer(kTick, [this] { ShowTicks(++m_ticks); });
        ShowTicks(0);
    }

    void ShowTicks(int count)
    {
        SetText(L"frame.ticks", (L"timer: " + std::to_wstring(count)).c_str());
    }

    void OpenMenu()
    {
        const auto* const button = Find<CButtonUI>(L"frame.menu");
        if (!button)
            return;
        POINT point{button->GetPos().left, button->GetPos().bottom};
        ::ClientToScreen(GetHwnd(), &point);
        OnCreateMenuInit(nullptr, kMenu, point);
    }

    void ShowMasked(bool keepTitle)
    {
        if (!m_dialog.Open(GetHwnd(), GetPaintManagerUI(), keepTitle))
            return;
        const UINT code = m_dialog.ShowModal();
        SetText(L"frame.event", (L"ShowModal: " + std::to_wstring(code)).c_str());
    }

    LRESULT Dragged(const wchar_t* hook, WPARAM wParam, int& handled)
    {
        if (!IsShown())
            return 0;
        const auto& drag = *reinterpret_cast<TDragDropUI*>(wParam);
        CDuiString line;
        line.Format(L"%s  (%d, %d)  %s", hook, static_cast<int>(drag.ptMouse.x),
                    static_cast<int>(drag.ptMouse.y),
                    drag.pControl ? drag.pControl->GetName().GetData() : L"");
        SetText(L"frame.event", line);
        if (drag.pControl && drag.pControl->IsDropEnabled() && drag.pdwEffect) {
            *drag.pdwEffect = DROPEFFECT_COPY;
            handled = 1;
        }
        return 0;
    }

    MaskedDialog m_dialog;
    UINT m_message = 0;
    WPARAM m_posted = 0;
    UINT m_timer = 0;
    int m_ticks = 0;
    std::jthread m_worker;
};

} // namespace

std::shared_ptr<Page> MakeFramePage(GalleryWindow& window)
{
    return std::make_shared<FramePage>(window);
}

} // namespace gallery
