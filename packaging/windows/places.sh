# Where the parts of a build for Windows lie. Sourced, not run.
libraries="${BANKWEAVER_WINDOWS_LIBRARIES:-${XDG_CACHE_HOME:-$HOME/.cache}/bankweaver/windows}"
prefix="$libraries/prefix"
