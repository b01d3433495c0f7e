#include "session/IdleTrim.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace
{

constexpr int muchWork = 200;
constexpr int quietLongEnoughMs = 500;

} // namespace

void IdleTrim::tick(int worked)
{
    if (worked > 0) {
        worked_ += worked;
        quiet_.start();
    } else if (worked_ >= muchWork && quiet_.hasExpired(quietLongEnoughMs)) {
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
