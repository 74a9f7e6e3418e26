// A host that says whatever a test wants it to say, on a free port of the loopback.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace bw::test {

struct Reply {
    std::string bytes;
    std::string again = {};  // sent behind them, again and again, until the client goes
    int pause = 0;           // milliseconds before each
    bool hang = false;       // the connection stays open until the client goes
};

class ScriptedServer {
  public:
    static constexpr size_t kMostRequests = 1000;  // that are kept

    using Script = std::function<Reply(const std::string& request)>;

    // The script runs on a thread for each connection. Without one the server is deaf: its queue of
    // connections is full, and stays so.
    explicit ScriptedServer(Script script) : script_(std::move(script)) {
        sockaddr_in address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {}, .sin_zero = {}};
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
        listen(listener_, script_ ? 128 : 0);
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
        host_ = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        if (script_) {
            acceptor_ = std::jthread([this] {
                for (int peer; (peer = accept(listener_, nullptr, nullptr)) >= 0;) {
                    ++talking_;
                    std::thread([this, peer] {
                        Serve(peer);
                        --talking_;
                    }).detach();
                }
            });
        }
        for (int& each : queued_) {
            each = script_ ? -1 : socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
            connect(each, reinterpret_cast<sockaddr*>(&address), size);
        }
    }
    ~ScriptedServer() {
        ends_ = true;
        shutdown(listener_, SHUT_RDWR);
        if (script_) acceptor_.join();
        while (talking_ > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        for (const int each : queued_)
            close(each);
        close(listener_);
    }

    const std::string& Host() const { return host_; }
    std::string Url(const std::string& file = "file") const {
        return "http://" + host_ + "/" + file;
    }
    std::vector<std::string> Requests() const {
        const std::lock_guard lock(mutex_);
        return requests_;
    }

  private:
    void Serve(int peer) {
        std::string request;
        char byte = 0;
        while (!request.ends_with("\r\n\r\n") && recv(peer, &byte, 1, 0) == 1)
            request += byte;
        {
            const std::lock_guard lock(mutex_);
            if (requests_.size() < kMostRequests) requests_.push_back(request);
        }
        const Reply reply = script_(request);
        bool goesOn = Send(peer, reply.bytes);
        while (goesOn && !reply.again.empty() && !ends_) {
            std::this_thread::sleep_for(std::chrono::milliseconds(reply.pause));
            goesOn = Send(peer, reply.again);
        }
        pollfd gone{.fd = peer, .events = POLLIN | POLLRDHUP, .revents = 0};
        while (reply.hang && !ends_ && poll(&gone, 1, 20) == 0)
            continue;
        close(peer);
    }
    static bool Send(int peer, const std::string& bytes) {
        for (size_t sent = 0; sent < bytes.size();) {
            const ssize_t count = send(peer, &bytes[sent], bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0) return false;
            sent += static_cast<size_t>(count);
        }
        return true;
    }

    const Script script_;
    const int listener_ = socket(AF_INET, SOCK_STREAM, 0);
    int queued_[3];
    std::string host_;
    std::atomic<bool> ends_{false};
    mutable std::mutex mutex_;
    std::vector<std::string> requests_;
    std::atomic<int> talking_{0};
    std::jthread acceptor_;
};

}  // namespace bw::test
