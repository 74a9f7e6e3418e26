// packaging/publish: a release that the program takes, or nothing of one.
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "common/temporary_folder.h"
#include "support/files.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

class Publish : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(Shell("minisign -G -W -p k.pub -s k.key && minisign -G -W -p o.pub -s o.key"), 0);
        WriteFile(folder_ / "program", "first");
        WriteFile(folder_ / "other", "second");
        WriteFile(folder_ / "text", "\"New\"\n\\ \xE4\xB8\xAD\n");
        WriteFile(folder_ / "dated", "#!/bin/sh\necho bankweaver 0.6.0\n");
        fs::permissions(folder_ / "dated", fs::perms(0755));
        WriteFile(folder_ / "long", std::string(4001, 'x'));
        WriteFile(folder_ / "bytes", "\xFF");
    }
    int Shell(const std::string& line) const {
        const std::string folder = "cd '" + folder_.Path().string() + "' && ";
        const int status = std::system((folder + "(" + line + ") </dev/null >log 2>&1").c_str());
        return WEXITSTATUS(status);
    }
    int Run(const std::string& words, const std::string& shell = "") const {
        return Shell(shell +
                     " BANKWEAVER_CHECK_RELEASE=" BANKWEAVER_CHECK_RELEASE
                     " /bin/bash " BANKWEAVER_PUBLISH " --key k.key -o out " +
                     words);
    }
    // Names and contents of what the host has.
    std::map<std::string, std::vector<uint8_t>> Published() const {
        std::map<std::string, std::vector<uint8_t>> files;
        if (!fs::exists(folder_ / "out")) return files;
        for (const auto& entry : fs::recursive_directory_iterator(folder_ / "out")) {
            if (entry.is_directory()) continue;
            files[fs::relative(entry.path(), folder_ / "out")] = *ReadFile(entry.path());
        }
        return files;
    }

    TemporaryFolder folder_;
};

TEST_F(Publish, AllOrNothing) {
    const std::string key = "--public-key k.pub ";
    const std::string host = "--host https://a.example/b ";
    const std::string usual = host + key + "--version 0.3.0.0 ";
    const struct {
        std::string words;
        int status;
        size_t files;  // that the host has then
        std::string shell = {};
    } cases[] = {
        {usual, 2, 0},
        {usual + "missing", 2, 0},
        {usual + "program other", 2, 0},
        {usual + "--notice-restart program", 2, 0},
        {usual + "--never program", 2, 0},
        {usual + "--text-en", 2, 0},
        {host + key + "--version 0.3.0 program", 2, 0},
        {key + "--host https://a.example/ --version 0.3.0.0 program", 2, 0},
        {usual + "--text-en bytes program", 2, 0},
        {host + "--public-key RWQ --version 0.3.0.0 program", 3, 0, "PATH=tools"},
        {usual + "--text-en long program", 1, 0},
        {usual + "--notice-id 0 program", 1, 0},
        {usual + "--notice-id 1 --notice-users 2 program", 1, 0},
        {host + key + "--version 0.0.0.0 program", 1, 0},
        {host + "--public-key o.pub --version 0.3.0.0 program", 1, 0},
        {key + "--host http://a.example --version 0.3.0.0 program", 1, 0},
        {key + "--host 'https://a b' --version 0.3.0.0 program", 1, 0},
        {usual + "--text-en text --text-zh text --force program", 0, 3},
        {usual + "other", 1, 3},  // the same version
        {host + key + "--version 0.4.0.0 --notice-id 1 --notice-en text other", 0, 6},
        {host + key + "--version 0.5.0.0 dated", 1, 6},
        {host + key + "--version 0.6.0.0 dated", 0, 8},
        {key + "--plain-http --host http://127.0.0.1:8080 --version 0.7.0.0 program", 0, 10},
    };
    ASSERT_EQ(Shell("mkdir tools && ln -s /usr/bin/dirname tools"), 0);
    for (const auto& [words, status, files, shell] : cases) {
        const auto before = Published();
        EXPECT_EQ(Run(words, shell), status) << words;
        EXPECT_EQ(Published().size(), files) << words;
        EXPECT_TRUE(status == 0 || Published() == before) << words;
    }
    for (const auto& [name, bytes] : Published())
        EXPECT_TRUE(name.starts_with("raw/master/Release/")) << name;
}

}  // namespace
}  // namespace bw
