// The system's header, without the macros that clash with our names.
#pragma once

#include <windows.h>
#undef CopyFile
#undef DeleteFile
#undef ReplaceFile
#undef RegCreateKey
#undef RegDeleteValue
