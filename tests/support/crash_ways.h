// Ways in which a program dies, by name.
#pragma once

#include <functional>
#include <map>
#include <string>

using CrashWays = std::map<std::string, std::function<void()>>;

// Those that only this system has.
CrashWays SystemCrashWays();
