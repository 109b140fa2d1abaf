#pragma once

#include <UIlib.h>

#include <memory>

#include "quillet/Export.h"

namespace DuiLib {

class UIImage;

// The colour of lines, ARGB.
class QUILLET_API UIPen {
public:
    UIPen();                    // transparent
    UIPen(unsigned long color); // ARGB
    UIPen(const UIPen& other);
    UIPen& operator=(const UIPen& other);
    ~UIPen();

    unsigned long GetColor() const;

private:
    std::unique_ptr<unsigned long> m_pColor;
};

// The colour of fills, ARGB.
class QUILLET_API UIBrush {
public:
    UIBrush();                    // transparent
    UIBrush(unsigned long color); // ARGB
    UIBrush(const UIBrush& other);
    UIBrush& operator=(const UIBrush& other);
    ~UIBrush();

    unsigned long GetColor() const;

private:
    std::unique_ptr<unsigned long> m_pColor;
};

// Draws with GDI+ on a control or into an image, for the time of one paint. Coordinates on a
// control are device pixels from its top left corner, wherever it stands in its window.
//
// A painter that has nothing to draw on draws nothing. GDI+ must be running as long as it lives.
// Published: copies share one record, so exactly one of them is destroyed.
class QUILLET_API UIPainter {
public:
    // Published: only Antialiasing has a meaning.
    enum RenderHint { Antialiasing = 1 };

    // On the device context of a paint; on the manager's own for a null one. Smoothed.
    UIPainter(CControlUI* control, HDC hdc);
    // Into the image. Published: not smoothed.
    explicit UIPainter(UIImage* image);
    UIPainter(const UIPainter& other) = default;
    UIPainter& operator=(const UIPainter& other);
    virtual ~UIPainter();

    void SetPen(const UIPen& pen);
    void SetBrush(const UIBrush& brush);

    // Keep pen and brush, and give them back. Published: transformation and clip are not kept, and
    // the first pair is never given up.
    void Save();
    void Restore();

    void ResetTransform();
    void Translate(int dx, int dy); // before the transformation so far
    void SetRenderHint(RenderHint hint);

    // Lines are one pixel wide.
    void DrawLine(int x1, int y1, int x2, int y2);
    void DrawLine(const POINT& from, const POINT& to);
    void DrawRectange(const RECT& rect);
    void FillRectange(const RECT& rect);

    // A part of the image, or the whole, with its opacity; a null image is not drawn.
    // Published: from then on texts are smoothed and fitted to the grid.
    void DrawImage(int x, int y, int width, int height, UIImage* image, int sourceX, int sourceY,
                   int sourceWidth, int sourceHeight);
    void DrawImage(int x, int y, int width, int height, UIImage* image);
    void DrawImage(const RECT& rect, UIImage* image);
    void DrawImage(int x, int y, UIImage* image); // in its own size

private:
    struct Record;

    Gdiplus::Point Offset() const;

    Record* m_pRecord;
};

} // namespace DuiLib
