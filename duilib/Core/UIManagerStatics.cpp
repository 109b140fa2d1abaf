#include "Core/ManagerState.h"

#include "Core/Diagnostics.h"
#include "Core/ResourceLoader.h"
#include "Core/UIResourceManager.h"

#include <algorithm>

namespace DuiLib {

namespace {

using Quillet::Text::View;

bool EndsInSlash(std::wstring_view path)
{
    return !path.empty() && (path.back() == L'\\' || path.back() == L'/');
}

// The archive is a file below the resource path, whichever of the two was set first.
void UseZipFile(const SharedState& shared)
{
    const std::wstring path =
        shared.zipName.IsEmpty()
            ? std::wstring()
            : std::wstring(shared.resourcePath.GetData()) + shared.zipName.GetData();
    UseResourceZip(path, shared.zipCached, shared.zipPassword);
}

std::vector<CPaintManagerUI*> AllManagers()
{
    const auto& managers = SharedState::Instance().managers;
    std::vector<CPaintManagerUI*> all;
    for (int index = 0; index < managers.GetSize(); ++index)
        all.push_back(static_cast<CPaintManagerUI*>(managers.GetAt(index)));
    return all;
}

bool Lives(CPaintManagerUI* manager)
{
    return SharedState::Instance().managers.Find(manager) >= 0;
}

// Calls a function for every manager, though it may open and close windows, until it answers true.
template <class Visit>
bool ForEachManager(Visit visit)
{
    for (CPaintManagerUI* const manager : AllManagers()) {
        if (Lives(manager) && visit(*manager))
            return true;
    }
    return false;
}

} // namespace

SharedState& SharedState::Instance()
{
    // Lives as long as the process: other modules may still hold controls when this one unloads.
    static SharedState* const instance = new SharedState;
    return *instance;
}

void SharedState::Release()
{
    defaultFont.reset();
    fonts.Clear();
    images.Clear();
    styles.Clear();
    defaults.clear();
    plugins.Empty();
    pluginModules.clear();
    UseResourceZip(std::wstring(), false, CDuiString());
    zipName.Empty();
    zipPassword.Empty();
    zipCached = false;
    if (gdiplus != 0)
        Gdiplus::GdiplusShutdown(std::exchange(gdiplus, 0));
}

HINSTANCE CPaintManagerUI::GetInstance()
{
    const HINSTANCE instance = SharedState::Instance().instance;
    return instance ? instance : ::GetModuleHandleW(nullptr);
}

void CPaintManagerUI::SetInstance(HINSTANCE instance)
{
    SharedState::Instance().instance = instance;
}

CDuiString CPaintManagerUI::GetInstancePath()
{
    std::wstring path(MAX_PATH, L'\0');
    DWORD length =
        ::GetModuleFileNameW(GetInstance(), path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = ::GetModuleFileNameW(GetInstance(), path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    path.resize(path.rfind(L'\\') + 1);
    return path.c_str();
}

CDuiString CPaintManagerUI::GetCurrentPath()
{
    std::wstring path(::GetCurrentDirectoryW(0, nullptr), L'\0');
    path.resize(::GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data()));
    return path.c_str();
}

void CPaintManagerUI::SetCurrentPath(LPCTSTR path)
{
    ::SetCurrentDirectoryW(path);
}

HINSTANCE CPaintManagerUI::GetResourceDll()
{
    const HINSTANCE module = SharedState::Instance().resourceModule;
    return module ? module : GetInstance();
}

void CPaintManagerUI::SetResourceDll(HINSTANCE module)
{
    SharedState::Instance().resourceModule = module;
}

const CDuiString& CPaintManagerUI::GetResourcePath()
{
    return SharedState::Instance().resourcePath;
}

void CPaintManagerUI::SetResourcePath(LPCTSTR path)
{
    auto& shared = SharedState::Instance();
    shared.resourcePath = path;
    if (!shared.resourcePath.IsEmpty() && !EndsInSlash(View(path)))
        shared.resourcePath += L'\\';
    if (!shared.zipInMemory)
        UseZipFile(shared);
}

const CDuiString& CPaintManagerUI::GetResourceZip()
{
    return SharedState::Instance().zipName;
}

const CDuiString& CPaintManagerUI::GetResourceZipPwd()
{
    return SharedState::Instance().zipPassword;
}

bool CPaintManagerUI::IsCachedResourceZip()
{
    return SharedState::Instance().zipCached;
}

HANDLE CPaintManagerUI::GetResourceZipHandle()
{
    return ResourceZipHandle();
}

void CPaintManagerUI::SetResourceZip(LPVOID bytes, unsigned int size, LPCTSTR password)
{
    auto& shared = SharedState::Instance();
    const bool any = bytes && size > 0;

    // A name of its own keeps the pictures of one archive apart from those of the next.
    static unsigned int count = 0;
    shared.zipName = any ? (L"memory:" + std::to_wstring(++count)).c_str() : L"";
    shared.zipPassword = password;
    shared.zipCached = any;
    shared.zipInMemory = any;
    UseResourceZip(any ? bytes : nullptr, any ? size : 0, shared.zipPassword);
}

void CPaintManagerUI::SetResourceZip(LPCTSTR file, bool cached, LPCTSTR password)
{
    auto& shared = SharedState::Instance();
    shared.zipName = file;
    shared.zipPassword = password;
    shared.zipCached = cached;
    shared.zipInMemory = false;
    UseZipFile(shared);
}

void CPaintManagerUI::SetResourceType(int type)
{
    SharedState::Instance().resourceType = type;
}

int CPaintManagerUI::GetResourceType()
{
    return SharedState::Instance().resourceType;
}

bool CPaintManagerUI::GetHSL(short* H, short* S, short* L)
{
    const auto& shared = SharedState::Instance();
    if (H)
        *H = shared.hue;
    if (S)
        *S = shared.saturation;
    if (L)
        *L = shared.lightness;
    return shared.useHSL;
}

void CPaintManagerUI::SetHSL(bool use, short H, short S, short L)
{
    auto& shared = SharedState::Instance();
    shared.useHSL = use;
    shared.hue = std::clamp<short>(H, 0, 360);
    shared.saturation = std::clamp<short>(S, 0, 200);
    shared.lightness = std::clamp<short>(L, 0, 200);
    const auto adjust = [&shared](ImageTable& images) {
        images.AdjustColours(shared.useHSL, shared.hue, shared.saturation, shared.lightness);
    };
    adjust(shared.images);
    ForEachManager([&](CPaintManagerUI& manager) {
        adjust(manager.m_pState->images);
        manager.Invalidate();
        return false;
    });
}

void CPaintManagerUI::ReloadSkin()
{
    ReloadSharedImages();
    ForEachManager([](CPaintManagerUI& manager) {
        manager.ReloadImages();
        return false;
    });
}

void CPaintManagerUI::ReloadSharedImages()
{
    SharedState::Instance().images.Reload();
    ForEachManager([](CPaintManagerUI& manager) {
        manager.Invalidate();
        return false;
    });
}

CPaintManagerUI* CPaintManagerUI::GetPaintManager(LPCTSTR name)
{
    CPaintManagerUI* found = nullptr;
    if (View(name).empty())
        return nullptr;
    ForEachManager([&](CPaintManagerUI& manager) {
        if (View(manager.GetName()) == View(name))
            found = &manager;
        return found != nullptr;
    });
    return found;
}

CStdPtrArray* CPaintManagerUI::GetPaintManagers()
{
    return &SharedState::Instance().managers;
}

bool CPaintManagerUI::LoadPlugin(LPCTSTR module)
{
    auto& shared = SharedState::Instance();
    if (View(module).empty())
        return false;
    Quillet::UniqueModule loaded(::LoadLibraryW(module));
    if (!loaded) {
        ReportFailure(FailureAt(View(module), 0, 0, L"the plug-in does not load"));
        return false;
    }
    const auto create = reinterpret_cast<LPVOID>(::GetProcAddress(loaded.get(), "CreateControl"));
    if (!create) {
        ReportFailure(FailureAt(View(module), 0, 0, L"the plug-in exports no CreateControl"));
        return false;
    }
    if (shared.plugins.Find(create) >= 0)
        return true;
    shared.plugins.Add(create);
    shared.pluginModules.push_back(std::move(loaded));
    return true;
}

CStdPtrArray* CPaintManagerUI::GetPlugins()
{
    return &SharedState::Instance().plugins;
}

void CPaintManagerUI::MessageLoop()
{
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!TranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
}

bool CPaintManagerUI::TranslateMessage(const LPMSG message)
{
    if (!message)
        return false;
    const bool isChild =
        message->hwnd && (::GetWindowLongPtrW(message->hwnd, GWL_STYLE) & WS_CHILD) != 0;
    const HWND window = message->hwnd;
    bool consumed = false;
    const auto& managers = SharedState::Instance().managers;
    for (int index = 0; index < managers.GetSize(); ++index)
        static_cast<CPaintManagerUI*>(managers.GetAt(index))->m_pState->passedOn.reset();
    ForEachManager([&](CPaintManagerUI& manager) {
        const HWND own = manager.GetPaintWindow();
        if (!own || (own != window && !(isChild && ::IsChild(own, window))))
            return false;
        if (manager.TranslateAccelerator(message)) {
            consumed = true;
            return true;
        }
        if (!Lives(&manager))
            return !isChild;
        LRESULT result = 0;
        const bool handled = manager.m_pState->OfferQueued(message->message, message->wParam,
                                                           message->lParam, result);
        if (handled && !isChild) {
            consumed = true;
        } else if (Lives(&manager) && own == window) {
            manager.m_pState->passedOn = State::PassedOn{message->message, message->wParam,
                                                         message->lParam, ::GetMessageTime()};
        }
        return !isChild;
    });
    return consumed;
}

void CPaintManagerUI::Term()
{
    CResourceManager::GetInstance()->Release();
    SharedState::Instance().Release();
}

CDuiString CPaintManagerUI::GetLastErrorText()
{
    return LastFailure();
}

void CPaintManagerUI::SetLastErrorText(LPCTSTR text)
{
    SetLastFailure(View(text));
}

void CPaintManagerUI::SetAllDPI(int dpi)
{
    ForEachManager([dpi](CPaintManagerUI& manager) {
        manager.SetDPI(dpi);
        return false;
    });
}

} // namespace DuiLib
