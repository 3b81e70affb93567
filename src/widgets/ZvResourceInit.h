// Registration of the widgets library's compiled-in resources (bitmaps, sample database).
#pragma once

namespace zv {

// Registers the resources once; every function that reads them calls it first, so users of the
// library never have to.
void ZvInitResources();

} // namespace zv
