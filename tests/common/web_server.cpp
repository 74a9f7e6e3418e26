#include "common/web_server.h"

#include <fstream>
#include <sstream>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "common/game_image.h"

namespace bw::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int kMostTries = 5;  // another process may take the free port first

// Single process: without a master there is no worker under another user's name.
constexpr const char* kConfiguration = R"(
daemon off;
master_process off;
pid nginx.pid;
error_log stderr;
events { worker_connections 512; }
http {
    client_body_temp_path body;
    proxy_temp_path proxy;
    fastcgi_temp_path fastcgi;
    uwsgi_temp_path uwsgi;
    scgi_temp_path scgi;
    log_format asked "$request_method $request_uri $status $http_range";
    access_log requests asked;
    sendfile on;
    server {
)";

// What went wrong; nothing if it worked.
std::string Run(std::vector<std::string> words, const fs::path& log) {
    std::optional<ChildProcess> child =
        ChildProcess::Start({.words = std::move(words), .logFile = log});
    if (child && child->WaitFor(20s) && child->Status() == 0) return {};
    return "failed: " + ReadText(log);
}

uint16_t FreePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    bind(socket, reinterpret_cast<sockaddr*>(&address), size);
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    close(socket);
    return ntohs(address.sin_port);
}

bool Listens(uint16_t port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    const bool listens =
        connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    close(socket);
    return listens;
}

}  // namespace

WebServer::WebServer(const fs::path& folder, Tls tls, const std::string& rules)
    : scheme_(tls == Tls::kNone ? "http" : "https") {
    // Servers stand where a user's PATH doesn't always look.
    fs::path program = FindProgram("nginx").value_or("/usr/sbin/nginx");
    if (!fs::exists(program)) {
        problem_ = "no nginx here: install the package nginx-light";
        return;
    }
    if (tls != Tls::kNone && !MakeCertificate(tls)) return;
    for (int i = 0; i < kMostTries; ++i) {
        port_ = FreePort();
        WriteConfiguration(folder, rules);
        if (Start(program)) return;
    }
    problem_ = "nginx doesn't start: " + ReadText(folder_ / "log");
}

std::string WebServer::Url(const std::string& file, const std::string& host) const {
    return scheme_ + "://" + host + ":" + std::to_string(port_) + "/" + file;
}

std::vector<std::string> WebServer::Requests() const {
    std::vector<std::string> requests;
    std::ifstream log(folder_ / "requests");
    for (std::string line; std::getline(log, line);) {
        // What a request doesn't have, stands as a hyphen.
        if (line.ends_with(" -")) line.resize(line.size() - 2);
        requests.push_back(line);
    }
    return requests;
}

bool WebServer::MakeCertificate(Tls tls) {
    const std::optional<fs::path> openssl = FindProgram("openssl");
    if (!openssl) {
        problem_ = "no openssl here: install the package of this name";
        return false;
    }
    const auto run = [&](std::vector<std::string> words) {
        words.insert(words.begin(), *openssl);
        problem_ = Run(std::move(words), folder_ / "openssl.log");
        return problem_.empty();
    };
    const fs::path authority = folder_ / "authority.pem", authorityKey = folder_ / "authority.key";
    const fs::path server = folder_ / "server.pem", serverKey = folder_ / "server.key";
    const fs::path request = folder_ / "server.csr";
    const std::string curve = "ec_paramgen_curve:prime256v1";
    const std::string names = tls == Tls::kOtherName
                                  ? "subjectAltName=DNS:elsewhere.example"
                                  : "subjectAltName=DNS:localhost,IP:127.0.0.1,IP:::1";
    return run({"req", "-x509", "-newkey", "ec", "-pkeyopt", curve, "-nodes", "-keyout",
                authorityKey, "-out", authority, "-subj", "/CN=Authority of a test"}) &&
           run({"req", "-x509", "-newkey", "ec", "-pkeyopt", curve, "-nodes", "-keyout", serverKey,
                "-out", server, "-subj", "/CN=Server of a test", "-addext", names, "-CA", authority,
                "-CAkey", authorityKey}) &&
           (tls != Tls::kExpired ||
            (run({"req", "-new", "-key", serverKey, "-out", request, "-subj", "/CN=Old server"}) &&
             run({"x509", "-req", "-in", request, "-out", server, "-days", "-1", "-CA", authority,
                  "-CAkey", authorityKey, "-set_serial", "2"})));
}

void WebServer::WriteConfiguration(const fs::path& served, const std::string& rules) const {
    std::ofstream file(folder_ / "nginx.conf");
    const std::string end = scheme_ == "https" ? " ssl;\n" : ";\n";
    file << kConfiguration << "listen 127.0.0.1:" << port_ << end << "listen [::1]:" << port_
         << end;
    if (scheme_ == "https") {
        file << "ssl_certificate " << folder_ / "server.pem"
             << ";\nssl_certificate_key " << folder_ / "server.key"
             << ";\n";
    }
    file << "root " << served << ";\n" << rules << "\n}\n}\n";
}

bool WebServer::Start(const std::string& program) {
    std::optional<ChildProcess> started = ChildProcess::Start(
        {.words = {program, "-e", "stderr", "-p", folder_.Path(), "-c", folder_ / "nginx.conf"},
         .workingFolder = folder_.Path(),
         .logFile = folder_ / "log"});
    if (!started) return false;
    server_.emplace(std::move(*started));
    return WaitUntilItListens();
}

bool WebServer::WaitUntilItListens() {
    const auto end = std::chrono::steady_clock::now() + 20s;
    while (std::chrono::steady_clock::now() < end && !server_->WaitFor(10ms)) {
        if (Listens(port_)) return true;
    }
    return false;
}

}  // namespace bw::test
