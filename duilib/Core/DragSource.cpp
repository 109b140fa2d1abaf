#include "Core/DragSource.h"

#include <new>
#include <utility>

namespace DuiLib {

namespace {

// Counts the references of an object with one interface and deletes it with the last.
template <class Interface>
class Counted : public Interface {
public:
    virtual ~Counted() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (!::IsEqualIID(id, IID_IUnknown) && !::IsEqualIID(id, __uuidof(Interface)))
            return E_NOINTERFACE;
        *object = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return static_cast<ULONG>(::InterlockedIncrement(&m_references));
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG left = ::InterlockedDecrement(&m_references);
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }

private:
    LONG m_references = 1;
};

class DropSource : public Counted<IDropSource> {
public:
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override
    {
        if (escape)
            return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) != 0 ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

FORMATETC BitmapFormat()
{
    return {CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
}

class FormatList : public Counted<IEnumFORMATETC> {
public:
    explicit FormatList(bool atEnd = false) : m_atEnd(atEnd) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, FORMATETC* formats, ULONG* fetched) override
    {
        if (formats == nullptr || (count != 1 && fetched == nullptr))
            return E_INVALIDARG;
        const bool gives = count > 0 && !m_atEnd;
        if (gives)
            *formats = BitmapFormat();
        m_atEnd = m_atEnd || gives;
        if (fetched != nullptr)
            *fetched = gives ? 1 : 0;
        return gives && count == 1 ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override
    {
        const bool isThere = count == 0 || (count == 1 && !m_atEnd);
        m_atEnd = m_atEnd || count > 0;
        return isThere ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override
    {
        m_atEnd = false;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumFORMATETC** list) override
    {
        if (list == nullptr)
            return E_POINTER;
        *list = new (std::nothrow) FormatList(m_atEnd);
        return *list != nullptr ? S_OK : E_OUTOFMEMORY;
    }

private:
    bool m_atEnd;
};

class PictureData : public Counted<IDataObject> {
public:
    explicit PictureData(Quillet::UniqueBitmap picture) : m_picture(std::move(picture)) {}

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override
    {
        if (medium == nullptr)
            return E_INVALIDARG;
        const HRESULT result = QueryGetData(format);
        if (result != S_OK)
            return result;
        // Each receiver owns what it gets.
        auto* const copy = static_cast<HBITMAP>(
            ::CopyImage(m_picture.get(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
        if (copy == nullptr)
            return E_OUTOFMEMORY;
        *medium = {};
        medium->tymed = TYMED_GDI;
        medium->hBitmap = copy;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override
    {
        if (format == nullptr)
            return E_INVALIDARG;
        if (format->cfFormat != CF_BITMAP)
            return DV_E_FORMATETC;
        if ((format->tymed & TYMED_GDI) == 0)
            return DV_E_TYMED;
        return format->dwAspect == DVASPECT_CONTENT ? S_OK : DV_E_DVASPECT;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override
    {
        if (out != nullptr)
            out->ptd = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** list) override
    {
        if (list == nullptr)
            return E_POINTER;
        *list = nullptr;
        if (direction != DATADIR_GET)
            return E_NOTIMPL;
        *list = new (std::nothrow) FormatList;
        return *list != nullptr ? S_OK : E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override
    {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override
    {
        return OLE_E_ADVISENOTSUPPORTED;
    }

private:
    Quillet::UniqueBitmap m_picture;
};

} // namespace

Quillet::ComPointer<IDataObject> MakePictureData(Quillet::UniqueBitmap picture)
{
    return Quillet::ComPointer<IDataObject>(new PictureData(std::move(picture)));
}

Quillet::ComPointer<IDropSource> MakeDropSource()
{
    return Quillet::ComPointer<IDropSource>(new DropSource);
}

} // namespace DuiLib
