// A web server for one test: nginx on a free port of the loopback, as the current user, with all
// it writes in a folder of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "common/child_process.h"
#include "common/temporary_folder.h"

namespace bw::test {

class WebServer {
  public:
    // The certificate: of an authority that is made with it and that no system knows.
    enum class Tls : uint8_t { kNone, kTestAuthority, kOtherName, kExpired };

    // Serves the files of `folder`, which may change meanwhile. `rules` join the server's
    // configuration, such as "location = /old { return 301 /new; }".
    explicit WebServer(const std::filesystem::path& folder, Tls tls = Tls::kNone,
                       const std::string& rules = {});

    // Such as "http://127.0.0.1:40001/update.json"; the server listens on 127.0.0.1 and [::1].
    std::string Url(const std::string& file, const std::string& host = "127.0.0.1") const;
    // Why there is no server; empty if there is one.
    const std::string& Problem() const { return problem_; }
    // A line for each answer so far: "GET /update.json 200 bytes=0-99", the last word only where a
    // range was asked for. The server writes it when the answer ends.
    std::vector<std::string> Requests() const;
    // As when the host goes off the network.
    void Kill() { server_.reset(); }

  private:
    bool MakeCertificate(Tls tls);
    void WriteConfiguration(const std::filesystem::path& served, const std::string& rules) const;
    bool Start(const std::string& program);
    bool WaitUntilItListens();

    TemporaryFolder folder_;
    std::optional<ChildProcess> server_;
    std::string scheme_;
    uint16_t port_ = 0;
    std::string problem_;
};

}  // namespace bw::test
