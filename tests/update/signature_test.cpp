// What is taken for a program of ours, with keys and signatures that minisign itself makes.
#include <cstdlib>
#include <regex>
#include <vector>

#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "support/files.h"
#include "update/minisign.h"
#include "update/signed_program.h"

namespace bw {
namespace {

using Kind = UpdateOutcome::Kind;

class SignedProgram : public testing::Test {
  protected:
    void SetUp() override {
        for (const std::string name : {"ours", "other"})
            Minisign("-G -W -p " + name + ".pub -s " + name + ".key");
        key_ = KeyOf("ours");
    }
    void Minisign(const std::string& words) const {
        const std::string folder = "cd '" + folder_.Path().string() + "' && ";
        ASSERT_EQ(std::system((folder + "minisign " + words + " </dev/null >log 2>&1").c_str()), 0)
            << "minisign is missing?";
    }
    std::string TextOf(const std::string& file) const {
        const auto bytes = ReadFile(folder_ / file).ValueOr({});
        return {bytes.begin(), bytes.end()};
    }
    std::string KeyOf(const std::string& name) const {
        const std::string text = TextOf(name + ".pub");
        return text.substr(text.find("\nRW") + 1, 56);
    }
    std::string Sign(std::string_view program, const std::string& comment,
                     const std::string& options = "-s ours.key") const {
        WriteFile(folder_ / "signed", program);
        Minisign("-S -m signed -x sig -t '" + comment + "' " + options);
        return TextOf("sig");
    }
    Kind Verify(std::string_view program, std::string_view signature, std::string_view key) {
        WriteFile(folder_ / "file", program);
        return VerifyProgram(folder_ / "file", signature, key, u"0.3.0.0", "prog", stop_).kind;
    }

    const std::string comment_ = "bankweaver 0.3.0.0 prog";
    TemporaryFolder folder_;
    std::string key_;
    std::atomic<bool> stop_ = false;
};

std::string Changed(std::string text, size_t at) {
    text[at] = text[at] == 'A' ? 'B' : 'A';
    return text;
}

TEST_F(SignedProgram, EachByteCounts) {
    std::string program((size_t{2} << 20) + 37, 'p');  // two pieces and a bit
    const std::string large = Sign(program, comment_);
    EXPECT_EQ(Verify(program, large, key_), Kind::kDone);
    for (const size_t at : {size_t{0}, program.size() / 2, program.size() - 1})
        EXPECT_EQ(Verify(Changed(program, at), large, key_), Kind::kBadSignature) << at;
    EXPECT_EQ(Verify(program + '\0', large, key_), Kind::kBadSignature);
    EXPECT_EQ(Verify(program.substr(1), large, key_), Kind::kBadSignature);
    EXPECT_EQ(Verify("", Sign("", comment_), key_), Kind::kDone) << "an empty program";

    const std::string small = Sign("small", comment_);
    for (size_t at = small.find('\n'); at + 1 < small.size(); ++at)
        EXPECT_NE(Verify("small", Changed(small, at), key_), Kind::kDone) << at;
    for (size_t at = 0; at < key_.size(); ++at)
        EXPECT_NE(Verify("small", small, Changed(key_, at)), Kind::kDone) << at;
    for (size_t size = 0; size + 1 < small.size(); ++size)
        EXPECT_NE(Verify("small", small.substr(0, size), key_), Kind::kDone) << size;
}

TEST_F(SignedProgram, SignaturesOfAllKinds) {
    const std::string good = Sign("small", comment_);
    // Lines of base64 of nothing but zeros.
    const std::string zeros = "untrusted comment: \nRUQ" + std::string(96, 'A') +
                              "=\ntrusted comment: " + comment_ + "\n" + std::string(86, 'A') +
                              "==\n";
    const auto edited = [&](const char* what, const char* by) {
        return std::regex_replace(good, std::regex(what), by);
    };
    const struct {
        const char* what;
        std::string signature;
        Kind expected;
    } cases[] = {
        {"as made", good, Kind::kDone},
        // What minisign takes, too.
        {"with CR LF", edited("\n", "\r\n"), Kind::kDone},
        {"without the last line's end", good.substr(0, good.size() - 1), Kind::kDone},
        {"with lines behind", good + "more\n", Kind::kDone},
        {"another untrusted comment", edited("^untrusted comment: .*", "untrusted comment: "),
         Kind::kDone},
        // What it doesn't.
        {"none", "", Kind::kNoSignature},
        {"a page of the host's", "<html>404</html>", Kind::kNoSignature},
        {"bytes", std::string(2000, '\xFF'), Kind::kNoSignature},
        {"no untrusted comment", edited("^untrusted", "trusted"), Kind::kNoSignature},
        {"a line too many", "\n" + good, Kind::kNoSignature},
        {"a blank behind base64", edited("=\n", "= \n"), Kind::kNoSignature},
        {"no padding", edited("==\n", "\n"), Kind::kNoSignature},
        {"huge", edited("^untrusted comment: .*", "untrusted comment: ") + std::string(4096, '\n'),
         Kind::kNoSignature},
        {"of the whole file", Sign("small", comment_, "-l -s ours.key"), Kind::kNoSignature},
        {"of another key", Sign("small", comment_, "-s other.key"), Kind::kOtherKey},
        {"zeros", zeros, Kind::kOtherKey},
        {"of another file", Sign("other", comment_), Kind::kBadSignature},
        {"another comment", edited("0.3.0.0", "0.4.0.0"), Kind::kBadSignature},
        {"a blank behind it", edited("prog", "prog "), Kind::kBadSignature},
        {"older version", Sign("small", "bankweaver 0.2.9.0 prog"), Kind::kOtherProgram},
        {"other name", Sign("small", "bankweaver 0.3.0.0 prog2"), Kind::kOtherProgram},
        {"something else of ours", Sign("small", "timestamp:1 file:prog"), Kind::kOtherProgram},
    };
    for (const auto& [what, signature, expected] : cases)
        EXPECT_EQ(Verify("small", signature, key_), expected) << what;

    // A key of zeros has signatures that are easy to guess.
    EXPECT_EQ(Verify("small", zeros, "RWQ" + std::string(53, 'A')), Kind::kBadSignature);
    for (const std::string& key : {std::string(), key_ + "\n", key_.substr(1), "R" + key_,
                                   std::string(56, 'A'), Changed(key_, 0)})
        EXPECT_EQ(Verify("small", good, key), Kind::kOtherKey) << key;
    stop_ = true;
    EXPECT_EQ(Verify("small", good, key_), Kind::kStopped);
    stop_ = false;
    for (const char* file : {"missing", "."}) {
        EXPECT_EQ(VerifyProgram(folder_ / file, good, key_, u"0.3.0.0", "prog", stop_).kind,
                  Kind::kFile);
    }
}

}  // namespace
}  // namespace bw
