// Q_INIT_RESOURCE must be used outside any namespace, hence this small file.
#include "ZvResourceInit.h"

#include <QtGlobal>

#include <mutex>

// Static rather than in an unnamed namespace: the macro declares the registration functions in
// the enclosing namespace, and rcc defines them in the global one.
static void InitResources() {
    Q_INIT_RESOURCE(zevrin);
    Q_INIT_RESOURCE(zevrin_sample);
}

namespace zv {

void ZvInitResources() {
    static std::once_flag Once;
    std::call_once(Once, InitResources);
}

} // namespace zv
