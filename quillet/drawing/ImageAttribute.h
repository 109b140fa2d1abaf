#pragma once

#include <UIlib.h>

#include "quillet/Export.h"

namespace DuiLib {

// An image description as skins have it, taken apart into fields, and its picture, which is loaded
// when it is first wanted:
//
//     file='a.png' dest='0,0,20,20' corner='2,2,2,2' fade='128'
//
// Pairs are separated by exactly one space behind a closing quote; a value has no quote in it. Keys
// and "true" are compared with regard to case. What comes before a fault counts, what comes after
// does not. A text without pairs is the name of the picture.
class QUILLET_API CImageAttribute {
public:
    CImageAttribute();
    virtual ~CImageAttribute();
    CImageAttribute(const CImageAttribute& other); // the picture is shared
    CImageAttribute& operator=(const CImageAttribute& other);

    // Clears the fields and reads a description. The one that is set already changes nothing. Null
    // is the empty text.
    // Published: the whole text is the name of the picture until a pair says otherwise.
    void SetAttributeString(const wchar_t* attribute);

    // Reads further pairs over the fields; neither the description nor a picture that was loaded
    // or could not be loaded changes.
    void ModifyAttribute(const wchar_t* attribute);
    const CDuiString& GetAttributeString() const;

    RECT GetDest(); // as all rectangles here: left, top, right, bottom as they are written
    void SetDest(const RECT& dest);
    const CDuiString& GetImageName() const;
    const CDuiString& GetResType() const;
    RECT GetSource() const; // of the picture; all zero before it is loaded: the whole
    RECT GetCorner() const;
    BYTE GetFade() const; // 255 is opaque
    DWORD GetMask() const;
    bool IsHole() const;
    bool IsXTiled() const;
    bool IsYTiled() const;

    // Loads the picture through the manager, which owns it, and cuts the source to it. False when
    // it cannot be loaded; the next description only is tried again.
    bool LoadImageW(CPaintManagerUI* manager);
    const TImageInfo* GetImageInfo() const; // null before it is loaded

    // Published: true also when nothing was loaded yet; false when loading has failed, and without
    // a description.
    bool IsLoadSuccess();

private:
    struct Pair;

    void Clear();
    void Clone(const CImageAttribute& other);
    void ParseAttribute(const wchar_t* attribute);
    void Apply(const Pair& pair);

    CDuiString m_sAttribute;
    CDuiString m_sImageName;
    CDuiString m_sResType;
    const TImageInfo* m_pImageInfo; // not owned
    bool m_bLoadAllowed;
    RECT m_rcDest;
    RECT m_rcSource;
    RECT m_rcCorner;
    BYTE m_uFade;
    DWORD m_dwMask;
    bool m_bHole;
    bool m_bXTiled;
    bool m_bYTiled;
};

} // namespace DuiLib
