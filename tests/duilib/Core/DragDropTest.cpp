#include "support/ControlHost.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

using namespace DuiLib;
using test::ControlHost;
using test::ImportHook;

namespace {

// Data of one format, which counts its references.
class OwnData : public IDataObject {
public:
    explicit OwnData(CLIPFORMAT format) : m_format(format) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override
    {
        *object = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC*, STGMEDIUM* medium) override
    {
        ++given;
        *medium = {};
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = ::GlobalAlloc(GMEM_MOVEABLE, 16);
        medium->pUnkForRelease = this; // ReleaseStgMedium then releases, and frees nothing
        AddRef();
        memory = medium->hGlobal;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override
    {
        return format->cfFormat == m_format ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

    ULONG references = 1;
    int given = 0;
    HGLOBAL memory = nullptr;

private:
    CLIPFORMAT m_format;
};

struct Told {
    UINT message;
    IDataObject* data;
    DWORD keys;
    POINT point;
    DWORD effect;
    CControlUI* control;
    LPARAM lParam;
};

// Sees the drag messages of a window before anybody else.
class DragListener : public IMessageFilterUI {
public:
    LRESULT MessageHandler(UINT message, WPARAM wParam, LPARAM lParam, bool& handled) override
    {
        if (message < UIMSG_DRAG || message > UIMSG_DRAGRELEASE)
            return 0;
        const auto& drag = *reinterpret_cast<TDragDropUI*>(wParam);
        told.push_back({message, drag.pDataObject, drag.dwKeyState, drag.ptMouse, *drag.pdwEffect,
                        drag.pControl, lParam});
        if (answer)
            *drag.pdwEffect = *answer;
        if (then)
            then(message);
        handled = result.has_value();
        return result.value_or(0);
    }

    std::vector<Told> told;
    std::optional<DWORD> answer;
    std::optional<LRESULT> result; // handles the message with it
    std::function<void(UINT)> then;
};

constexpr DWORD kAll = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;

class DragDropTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(SUCCEEDED(::OleInitialize(nullptr)));
        host = std::make_unique<ControlHost>(200, 100);
        host->Load(LR"(<Window><HorizontalLayout>
            <Button name="left" drag="true" /><Button name="right" drop="true" />
            </HorizontalLayout></Window>)");
        host->Paint();
        host->Manager().AddMessageFilter(&listener);
    }
    void TearDown() override
    {
        host.reset();
        ::OleUninitialize();
    }

    IDropTarget& Target() { return host->Manager(); }
    POINTL OnScreen(int x, int y)
    {
        POINT point{x, y};
        ::ClientToScreen(host->Window(), &point);
        return {point.x, point.y};
    }
    CControlUI* Control(const wchar_t* name) { return host->Manager().FindControl(name); }

    DragListener listener;
    std::unique_ptr<ControlHost> host;
};

TEST(DragDropWithoutOleTest, CannotBeEnabled)
{
    ControlHost host(50, 50);
    EXPECT_FALSE(host.Manager().EnableDragDrop(true));
    EXPECT_FALSE(host.Manager().EnableDragDrop(false));
}

TEST_F(DragDropTest, IsEnabledAndDisabledOnce)
{
    auto& manager = host->Manager();
    EXPECT_FALSE(manager.EnableDragDrop(false));
    EXPECT_TRUE(manager.EnableDragDrop(true));
    EXPECT_FALSE(manager.EnableDragDrop(true));
    EXPECT_EQ(::RegisterDragDrop(host->Window(), &manager), DRAGDROP_E_ALREADYREGISTERED);
    EXPECT_TRUE(manager.EnableDragDrop(false));
    EXPECT_EQ(::RevokeDragDrop(host->Window()), DRAGDROP_E_NOTREGISTERED);
}

TEST_F(DragDropTest, TheEndOfTheWindowRevokesIt)
{
    ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    const HWND window = host->Window();
    ::DestroyWindow(window);
    EXPECT_FALSE(host->Manager().EnableDragDrop(true));
}

TEST_F(DragDropTest, ReferencesAreCountedButDeleteNothing)
{
    auto& manager = host->Manager();
    EXPECT_EQ(manager.AddRef(), 1u);
    EXPECT_EQ(manager.Release(), 0u);
    void* object = nullptr;
    EXPECT_EQ(manager.QueryInterface(IID_IDropTarget, &object), S_OK);
    EXPECT_EQ(object, static_cast<IDropTarget*>(&manager));
    EXPECT_EQ(manager.Release(), 0u);
    EXPECT_EQ(manager.QueryInterface(IID_IDropSource, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_NE(manager.GetRoot(), nullptr);
}

TEST_F(DragDropTest, EachStageIsToldWithPointKeysEffectAndControl)
{
    OwnData data(CF_HDROP);
    ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    DWORD effect = kAll;
    EXPECT_EQ(Target().DragEnter(&data, MK_LBUTTON, OnScreen(20, 30), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    effect = kAll;
    EXPECT_EQ(Target().DragOver(MK_LBUTTON | MK_SHIFT, OnScreen(150, 40), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_MOVE));
    EXPECT_EQ(Target().DragLeave(), S_OK);

    ASSERT_EQ(listener.told.size(), 3u);
    const Told& enter = listener.told[0];
    EXPECT_EQ(enter.message, static_cast<UINT>(UIMSG_DRAGENTER));
    EXPECT_EQ(enter.data, &data);
    EXPECT_EQ(enter.keys, static_cast<DWORD>(MK_LBUTTON));
    EXPECT_EQ(enter.point.x, 20);
    EXPECT_EQ(enter.point.y, 30);
    EXPECT_EQ(enter.lParam, MAKELPARAM(20, 30));
    EXPECT_EQ(enter.effect, static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_EQ(enter.control, Control(L"left"));
    const Told& over = listener.told[1];
    EXPECT_EQ(over.message, static_cast<UINT>(UIMSG_DRAGOVER));
    EXPECT_EQ(over.data, &data);
    EXPECT_EQ(over.keys, static_cast<DWORD>(MK_LBUTTON | MK_SHIFT));
    EXPECT_EQ(over.control, Control(L"right"));
    EXPECT_EQ(over.lParam, MAKELPARAM(150, 40));
    const Told& leave = listener.told[2];
    EXPECT_EQ(leave.message, static_cast<UINT>(UIMSG_DRAGLEAVE));
    EXPECT_EQ(leave.data, nullptr);
    EXPECT_EQ(data.references, 1u);
}

TEST_F(DragDropTest, ADropIsToldAndTheSupportedMediumFreed)
{
    OwnData data(CF_HDROP);
    ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    DWORD effect = kAll;
    Target().DragEnter(&data, MK_LBUTTON, OnScreen(150, 30), &effect);
    effect = kAll;
    EXPECT_EQ(Target().Drop(&data, MK_CONTROL, OnScreen(150, 30), &effect), S_OK);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    ASSERT_EQ(listener.told.size(), 2u);
    EXPECT_EQ(listener.told[1].message, static_cast<UINT>(UIMSG_DRAGRELEASE));
    EXPECT_EQ(listener.told[1].data, &data);
    EXPECT_EQ(listener.told[1].control, Control(L"right"));
    EXPECT_EQ(listener.told[1].keys, static_cast<DWORD>(MK_CONTROL));
    EXPECT_EQ(listener.told[1].point.x, 150);
    EXPECT_EQ(listener.told[1].point.y, 30);
    EXPECT_EQ(listener.told[1].lParam, MAKELPARAM(150, 30));
    EXPECT_EQ(data.given, 1);
    EXPECT_EQ(data.references, 1u);
    ::GlobalFree(data.memory);
}

TEST_F(DragDropTest, UnsupportedDataIsToldWithoutAnEffectButMayBeTaken)
{
    OwnData data(CF_LOCALE);
    ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    DWORD effect = kAll;
    Target().DragEnter(&data, MK_LBUTTON, OnScreen(20, 30), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    listener.answer = DROPEFFECT_LINK;
    effect = DROPEFFECT_COPY | DROPEFFECT_LINK;
    Target().DragOver(MK_LBUTTON, OnScreen(20, 30), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_LINK));
    effect = DROPEFFECT_COPY;
    Target().DragOver(MK_LBUTTON, OnScreen(20, 30), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE)) << "the source does not allow it";
    effect = kAll;
    Target().Drop(&data, 0, OnScreen(20, 30), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_LINK));
    EXPECT_EQ(data.given, 0);
}

TEST_F(DragDropTest, TheResultOfTheMessageIsNoAnswer)
{
    OwnData data(CF_HDROP);
    ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    for (const LRESULT result : {LRESULT{0}, LRESULT{DROPEFFECT_LINK}, LRESULT{-1}}) {
        SCOPED_TRACE(result);
        listener.result = result;
        DWORD effect = kAll;
        EXPECT_EQ(Target().DragEnter(&data, MK_LBUTTON, OnScreen(20, 30), &effect), S_OK);
        EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
        effect = kAll;
        EXPECT_EQ(Target().Drop(&data, MK_LBUTTON, OnScreen(20, 30), &effect), S_OK);
        EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
        ::GlobalFree(data.memory);
    }
}

TEST_F(DragDropTest, NothingIsToldUnlessItIsEnabled)
{
    OwnData data(CF_HDROP);
    DWORD effect = kAll;
    Target().DragEnter(&data, MK_LBUTTON, OnScreen(20, 30), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_TRUE(listener.told.empty());

    // Disabled in the midst of a drag, of which the source goes on to tell.
    ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    Target().DragEnter(&data, MK_LBUTTON, OnScreen(20, 30), &effect);
    ASSERT_TRUE(host->Manager().EnableDragDrop(false));
    listener.told.clear();
    effect = kAll;
    Target().DragOver(MK_LBUTTON, OnScreen(20, 30), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    effect = kAll;
    Target().Drop(&data, MK_LBUTTON, OnScreen(20, 30), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    Target().DragLeave();
    EXPECT_TRUE(listener.told.empty());
    EXPECT_EQ(data.given, 0);
    EXPECT_EQ(data.references, 1u);
}

TEST_F(DragDropTest, NullArgumentsAreRefused)
{
    OwnData data(CF_HDROP);
    DWORD effect = kAll;
    EXPECT_EQ(Target().DragEnter(nullptr, 0, {}, &effect), E_INVALIDARG);
    EXPECT_EQ(Target().DragEnter(&data, 0, {}, nullptr), E_INVALIDARG);
    EXPECT_EQ(Target().DragOver(0, {}, nullptr), E_INVALIDARG);
    EXPECT_EQ(Target().Drop(nullptr, 0, {}, &effect), E_INVALIDARG);
    EXPECT_TRUE(listener.told.empty());
}

TEST_F(DragDropTest, TheWindowMayEndDuringADrop)
{
    OwnData data(CF_HDROP);
    ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    listener.then = [this](UINT message) {
        if (message == UIMSG_DRAGRELEASE)
            ::DestroyWindow(host->Window());
    };
    DWORD effect = kAll;
    Target().DragEnter(&data, MK_LBUTTON, OnScreen(20, 30), &effect);
    effect = kAll;
    Target().Drop(&data, 0, OnScreen(20, 30), &effect);
    EXPECT_EQ(data.references, 1u);
    if (data.memory)
        ::GlobalFree(data.memory);
}

// Dragging out

struct Dragged {
    int count = 0;
    DWORD effects = 0;
    bool hadBitmap = false;
    SIZE size{};
    bool listed = false;
    HRESULT atEscape = S_OK;
    HRESULT whileHeld = S_OK;
    HRESULT atRelease = S_OK;
} dragged;

HRESULT WINAPI RecordDrag(IDataObject* data, IDropSource* source, DWORD effects, DWORD* done)
{
    ++dragged.count;
    dragged.effects = effects;
    FORMATETC format{CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
    STGMEDIUM medium{};
    dragged.hadBitmap =
        data->QueryGetData(&format) == S_OK && SUCCEEDED(data->GetData(&format, &medium));
    if (dragged.hadBitmap) {
        BITMAP bitmap{};
        ::GetObjectW(medium.hBitmap, sizeof(bitmap), &bitmap);
        dragged.size = {bitmap.bmWidth, bitmap.bmHeight};
        ::ReleaseStgMedium(&medium);
    }
    format.cfFormat = CF_TEXT;
    EXPECT_EQ(data->QueryGetData(&format), DV_E_FORMATETC);
    IEnumFORMATETC* list = nullptr;
    if (SUCCEEDED(data->EnumFormatEtc(DATADIR_GET, &list))) {
        FORMATETC listed{};
        dragged.listed = list->Next(1, &listed, nullptr) == S_OK && listed.cfFormat == CF_BITMAP &&
                         list->Next(1, &listed, nullptr) == S_FALSE;
        list->Release();
    }
    dragged.atEscape = source->QueryContinueDrag(TRUE, MK_LBUTTON);
    dragged.whileHeld = source->QueryContinueDrag(FALSE, MK_LBUTTON);
    dragged.atRelease = source->QueryContinueDrag(FALSE, 0);
    EXPECT_EQ(source->GiveFeedback(DROPEFFECT_COPY), DRAGDROP_S_USEDEFAULTCURSORS);
    *done = DROPEFFECT_NONE;
    return DRAGDROP_S_CANCEL;
}

class DragOutTest : public DragDropTest {
protected:
    void SetUp() override
    {
        DragDropTest::SetUp();
        dragged = {};
        ASSERT_TRUE(host->Manager().EnableDragDrop(true));
    }

    // Presses the left button on a control and moves the mouse with it held.
    void Pull(const wchar_t* name, int dx = 30)
    {
        const RECT place = Control(name)->GetPos();
        const POINT at{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
        host->MoveMouse(at.x, at.y);
        host->Press(at.x, at.y);
        host->Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x + dx, at.y));
    }

    ImportHook hook{L"DuiLib.dll", "ole32.dll", "DoDragDrop", reinterpret_cast<void*>(&RecordDrag)};
};

TEST_F(DragOutTest, AControlIsDraggedAsItsPicture)
{
    Pull(L"left");
    EXPECT_EQ(dragged.count, 1);
    EXPECT_EQ(dragged.effects, kAll);
    EXPECT_TRUE(dragged.hadBitmap);
    EXPECT_EQ(dragged.size.cx, Control(L"left")->GetWidth());
    EXPECT_EQ(dragged.size.cy, Control(L"left")->GetHeight());
    EXPECT_TRUE(dragged.listed);
    EXPECT_EQ(dragged.atEscape, DRAGDROP_S_CANCEL);
    EXPECT_EQ(dragged.whileHeld, S_OK);
    EXPECT_EQ(dragged.atRelease, DRAGDROP_S_DROP);
    ASSERT_EQ(listener.told.size(), 1u);
    EXPECT_EQ(listener.told[0].message, static_cast<UINT>(UIMSG_DRAG));
    EXPECT_EQ(listener.told[0].control, Control(L"left"));
    EXPECT_EQ(listener.told[0].data, nullptr);
    EXPECT_EQ(listener.told[0].keys, static_cast<DWORD>(MK_LBUTTON));
    EXPECT_EQ(listener.told[0].effect, kAll);
    EXPECT_EQ(listener.told[0].point.x, 80);
    EXPECT_EQ(listener.told[0].point.y, 50);
    EXPECT_EQ(listener.told[0].lParam, MAKELPARAM(80, 50));
}

TEST_F(DragOutTest, TheButtonIsReleasedWithoutAClick)
{
    Pull(L"left");
    EXPECT_FALSE(host->Manager().IsCaptured());
    EXPECT_TRUE(host->Sent(DUI_MSGTYPE_CLICK).empty());
    host->Release(10, 10);
    EXPECT_TRUE(host->Sent(DUI_MSGTYPE_CLICK).empty());
    host->Click(20, 20);
    EXPECT_EQ(host->Sent(DUI_MSGTYPE_CLICK).size(), 1u);
}

TEST_F(DragOutTest, AShortMoveIsNoDrag)
{
    Pull(L"left", 1);
    EXPECT_EQ(dragged.count, 0);
    EXPECT_TRUE(listener.told.empty());
}

TEST_F(DragOutTest, OtherControlsAreNotDragged)
{
    Pull(L"right");
    EXPECT_EQ(dragged.count, 0);
    EXPECT_TRUE(listener.told.empty());
}

TEST_F(DragOutTest, NothingIsDraggedOnceItIsDisabled)
{
    host->Manager().EnableDragDrop(false);
    Pull(L"left");
    EXPECT_EQ(dragged.count, 0);
}

TEST_F(DragOutTest, TheReceiverMayForbidIt)
{
    listener.answer = DROPEFFECT_NONE;
    Pull(L"left");
    host->Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(90, 50));
    EXPECT_EQ(dragged.count, 0);
    EXPECT_EQ(listener.told.size(), 1u) << "asked once for each press";
}

TEST_F(DragOutTest, TheReceiverMayNarrowTheEffects)
{
    listener.answer = DROPEFFECT_MOVE;
    Pull(L"left");
    EXPECT_EQ(dragged.effects, static_cast<DWORD>(DROPEFFECT_MOVE));
}

class TakeOver : public IDragDropUI {
public:
    bool OnDragDrop(CControlUI* control) override
    {
        asked.push_back(control);
        return takes;
    }
    std::vector<CControlUI*> asked;
    bool takes = true;
};

TEST_F(DragOutTest, AHookMayTakeItOver)
{
    TakeOver hookUi;
    host->Manager().SetDragDrop(&hookUi);
    Pull(L"left");
    ASSERT_EQ(hookUi.asked.size(), 1u);
    EXPECT_EQ(hookUi.asked[0], Control(L"left"));
    EXPECT_EQ(dragged.count, 0);
    EXPECT_TRUE(listener.told.empty());

    host->Release(5, 5);
    hookUi.takes = false;
    Pull(L"left");
    EXPECT_EQ(hookUi.asked.size(), 2u);
    EXPECT_EQ(dragged.count, 1);
    host->Manager().SetDragDrop(nullptr);
}

TEST_F(DragOutTest, TheControlMayBeDeletedWhenItIsAsked)
{
    listener.then = [this](UINT) {
        auto* const parent =
            static_cast<CContainerUI*>(Control(L"left")->GetParent()->GetInterface(L"Container"));
        parent->SetDelayedDestroy(false);
        parent->Remove(Control(L"left"));
    };
    Pull(L"left");
    EXPECT_EQ(dragged.count, 0);
}

TEST_F(DragOutTest, TheWindowMayEndWhenItIsAsked)
{
    listener.then = [this](UINT) { ::DestroyWindow(host->Window()); };
    Pull(L"left");
    EXPECT_EQ(dragged.count, 0);
}

TEST_F(DragOutTest, DraggingLeavesNoObject)
{
    Pull(L"left");
    const int before = test::GdiObjects();
    for (int i = 0; i < 20; ++i)
        Pull(L"left");
    EXPECT_EQ(test::GdiObjects(), before);
    EXPECT_EQ(dragged.count, 21);
}

} // namespace
