// The terminal that the program runs at.
#pragma once

namespace bw {

// Whether a person watches standard error.
bool StandardErrorIsTerminal();

// From now on `handler` is called with the number of a signal that asks the program to end (the
// user's Ctrl+C, a closed terminal, the system), but for those that whoever started the program
// has switched off, as nohup does. A reader that leaves the program's output doesn't end it.
void OnEndRequest(void (*handler)(int));

}  // namespace bw
