// libc++ puts a header of its own before the C library's, which needs more of locales than this build has.
#include <../msvcrt/locale.h>
