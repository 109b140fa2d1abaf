#pragma once

#include <UIlib.h>

#include <string>

#include "quillet/Export.h"

namespace DuiLib {

// One picture, a GDI+ bitmap or a GDI one, and how it is to be drawn. UIPainter draws it and draws
// into it. GDI+ must be running as long as the picture lives.
//
// Published: copies share one record and with it the picture, so exactly one of them is destroyed.
class QUILLET_API UIImage {
public:
    UIImage();
    UIImage(int width, int height);   // pixels, transparent
    UIImage(HBITMAP bitmap);          // taken over
    UIImage(Gdiplus::Bitmap* bitmap); // taken over
    ~UIImage();
    UIImage(const UIImage& other) = default;
    UIImage& operator=(const UIImage& other);

    // A copy of the picture, without the settings; the caller owns it. Null without memory.
    UIImage* Clone() const;

    Gdiplus::Bitmap* GetBitmap() const; // not given away; null for a GDI bitmap
    HBITMAP GetHBITMAP() const;         // not given away; null for a GDI+ bitmap

    // Pixels. Published: 0 for a GDI bitmap.
    int GetWidth() const;
    int GetHeight() const;

    int GetOpacity() const; // percent, for whoever draws the picture; 100 at first
    void SetOpacity(int percent);

    // Blurs the pixels, by a percentage of 255 pixels; again with each call. 0 and less is only
    // stored.
    int GetBlur() const;
    void SetBlur(int radiusPercent, bool expandEdge);

    // Brightens the pixels, again with each call; 0 and less does nothing.
    // Published: the level is not stored, so it always reads 0.
    int GetBrightness() const;
    void SetBrightness(int level);

    void Save(const std::wstring& path); // as PNG; nothing for a GDI bitmap

    // Without it the picture outlives the object, and the caller owns it.
    void SetAutoDestroyResource(bool autoDestroy);

private:
    struct Record;

    Record* m_pRecord;
};

} // namespace DuiLib
