#include "support/program_words.h"

namespace bw {

std::vector<std::string> ProgramWords(int count, char** values) {
    return {values + (count > 0 ? 1 : 0), values + count};
}

}  // namespace bw
