#pragma once

#include <string>

namespace test {

// Exact numbers of what the process holds right now. Run an action once before counting: the
// platform keeps the first object of a kind.

// Bitmaps, brushes, pens, fonts, regions, DCs.
int GdiObjects();

// The same by kind, such as "3 DC, 12 region", where the system tells.
std::string GdiObjectKinds();

// Top-level windows of this thread and all their children.
int UserWindows();

// GDI+ objects made less those freed by the modules of this project since the first call. Call
// it once before the action, to start the counting.
int GdiplusObjects();

// Blocks in use on the C heap.
int HeapBlocks();

// Threads of this process.
int Threads();

} // namespace test
