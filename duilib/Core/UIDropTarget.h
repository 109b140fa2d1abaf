#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include <vector>

namespace DuiLib {

// Where the system drops what the user drags. Registered for a window with RegisterDragDrop, which
// needs OleInitialize.
//
// The object belongs to whoever made it: references are counted, but the last one deletes nothing.
class UILIB_API CIDropTarget : public IDropTarget {
public:
    CIDropTarget();
    virtual ~CIDropTarget();
    CIDropTarget(const CIDropTarget&) = delete;
    CIDropTarget& operator=(const CIDropTarget&) = delete;

    void SetTargetWnd(HWND window);

    // A format that OnDrop can take. The record is copied, a target device is not kept.
    void AddSuportedFormat(FORMATETC& format);

    // Called at a drop for each supported format that the data has, until one is taken. True:
    // taken, the caller frees the medium; false: the medium now belongs to the callee, or is none
    // of its concern when the callee does not keep it.
    virtual bool OnDrop(FORMATETC* format, STGMEDIUM& medium, DWORD* effect) = 0;

    // IUnknown:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // IDropTarget:
    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL point,
                                        DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL point, DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragLeave() override;
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL point,
                                   DWORD* effect) override;

    // What a drop would do with these keys (MK_ bits): narrows `*effect`, which comes in as what
    // the source allows, to one DROPEFFECT_. False, and DROPEFFECT_NONE, when nothing of the data
    // is supported.
    bool QueryDrop(DWORD keys, LPDWORD effect);

protected:
    HWND m_hTargetWnd;

private:
    LONG m_lReferences;
    bool m_bAllowDrop; // the data over the window has a supported format
    std::vector<FORMATETC> m_aFormats;
};

} // namespace DuiLib
