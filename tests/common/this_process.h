// What a test, or a program that a test starts, is to the system.
#pragma once

#include <cstddef>
#include <cstdint>

namespace bw::test {

// A line that is written ends in a line feed alone, on every system.
void KeepLineEnds();
// Standard output and standard error.
void CloseOutputs();
uint32_t OwnProcessId();
// Of this program: files, pipes, processes.
uint32_t CountOpenHandles();
// What malloc has given and not got back; may be 0 where another one takes its place.
size_t HeldBytes();

}  // namespace bw::test
