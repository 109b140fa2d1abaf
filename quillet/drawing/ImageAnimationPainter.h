#pragma once

#include <UIlib.h>

#include <string>
#include <vector>

#include "quillet/Export.h"

namespace DuiLib {

// Plays a sequence of pictures inside a control, driven by a timer of the control. The frame
// follows from the time that has gone by, in ticks of the timer, and the duration of a cycle.
//
// All is called on the user-interface thread; frames may be decoded on a thread of their own. The
// control (not owned) outlives the painter, or ends together with it.
// Published: copies share one record, so exactly one of them is destroyed.
class QUILLET_API ImageAnimationPainter {
public:
    explicit ImageAnimationPainter(CControlUI* control);
    ImageAnimationPainter(const ImageAnimationPainter& other) = default;
    ImageAnimationPainter& operator=(const ImageAnimationPainter& other);
    virtual ~ImageAnimationPainter();

    // Frames in memory, which the painter owns from now on.
    void SetBitmaps(const std::vector<HBITMAP>& bitmaps);

    // Frames by their names in the resources. With preload all are decoded now and kept, but for
    // those that cannot be; when none can, the frames held so far stay. Otherwise each is decoded
    // when it is shown: by the paint, as a whole image string with parseAsAttribute, or with
    // backgroundLoading by a thread while the frame before is shown.
    void SetFileRes(const std::vector<std::wstring>& names, bool preload, bool backgroundLoading,
                    bool parseAsAttribute);

    void SetDuring(int ms);    // of a cycle; 0 shows the next frame at each tick. 1000 at first
    void SetPrecision(int ms); // between two ticks; a running timer stays as it is. 10 at first
    void SetPadding(int left, int top, int right, int bottom); // of bitmaps; device pixels
    void SetAnimationBackgroundColor(DWORD argb);              // 0 is none

    // Ends the animation after n rounds; below 1 never.
    // Published: the end of a cycle counts two rounds, and without a frame for every tick of a
    // cycle the animation never ends.
    void SetMaxRound(int n);

    // Published: nothing but the background is painted before the first tick.
    void Start();
    void Stop();
    bool IsAnimating();

    void Paint(HDC hdc); // nothing when it is not animating

    // Goes on where another one was; null does nothing.
    void CloneStateFrom(ImageAnimationPainter* other);

private:
    struct Record;

    bool OnNotify(void* notification);

    Record* m_pRecord;
};

} // namespace DuiLib
