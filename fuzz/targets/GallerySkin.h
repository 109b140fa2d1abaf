#pragma once

namespace fuzz {

// Makes the gallery's skin the resource folder. While it is, the toolkit finds no file elsewhere:
// most names that mutation makes are of none, and looking for them costs more than the run itself.
void UseGallerySkin();

} // namespace fuzz
