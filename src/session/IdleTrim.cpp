#include "session/IdleTrim.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace
{

constexpr int muchWork = 200;
constexpr int quietLongEnough = 10;

} // namespace

void IdleTrim::tick(int worked)
{
    if (worked > 0) {
        worked_ += worked;
        quietTicks_ = 0;
    } else if (worked_ >= muchWork && ++quietTicks_ == quietLongEnough) {
        giveBack();
    }
}

void IdleTrim::giveBack()
{
    worked_ = 0;
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}
