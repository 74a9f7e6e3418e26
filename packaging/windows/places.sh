# Where the parts of a build for Windows lie. Sourced, not run.
libraries="${BANKWEAVER_WINDOWS_LIBRARIES:-${XDG_CACHE_HOME:-$HOME/.cache}/bankweaver/windows}"
prefix="$libraries/prefix"

# The compilers, their tools, the console of Windows, and what makes the libraries.
windows_packages="g++-mingw-w64-x86-64-posix wine64 g++ cmake ninja-build make dpkg-dev tcl zip"
