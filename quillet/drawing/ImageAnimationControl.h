#pragma once

#include <UIlib.h>

#include <memory>
#include <string>
#include <vector>

#include "quillet/Export.h"
#include "quillet/drawing/ImageAnimationPainter.h"

namespace DuiLib {

// A control that shows an animation and nothing else: neither background nor border of its own.
//
// It has no XML class; applications make it in code. Attribute "bindwithvisible" beside those of
// every control.
class QUILLET_API CImageAnimationControlUI : public CControlUI {
public:
    CImageAnimationControlUI();
    explicit CImageAnimationControlUI(ImageAnimationPainter* painter); // taken over
    ~CImageAnimationControlUI() override;
    CImageAnimationControlUI(const CImageAnimationControlUI&) = delete;
    CImageAnimationControlUI& operator=(const CImageAnimationControlUI&) = delete;

    // As ImageAnimationPainter's.
    void SetBitmaps(const std::vector<HBITMAP>& bitmaps);
    void SetFileRes(const std::vector<std::wstring>& names, bool preload, bool backgroundLoading,
                    bool parseAsAttribute);
    void SetDuring(unsigned ms);
    void SetPrecision(unsigned ms);
    void SetPadding(unsigned left, unsigned top, unsigned right, unsigned bottom);
    using CControlUI::SetPadding;
    void SetMaxRound(unsigned n);
    void SetAnimationBackgroundColor(DWORD argb);
    void Start();
    void Stop();
    bool IsAnimating();
    void CloneStateFrom(CImageAnimationControlUI* other);
    ImageAnimationPainter* GetPainter(); // not given away

    // CControlUI:
    bool DoPaint(HDC hdc, const RECT& paint, CControlUI* stop) override; // calls the next one
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void SetVisible(bool visible = true) override;

protected:
    void DoPaint(HDC hdc, const RECT& paint);

private:
    std::unique_ptr<ImageAnimationPainter> m_pPainter;
    bool m_bBoundToVisibility = false; // showing starts the animation, hiding stops it
};

} // namespace DuiLib
