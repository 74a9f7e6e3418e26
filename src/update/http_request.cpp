#include "update/http_request.h"

#include <memory>
#include <string>
#include <utility>

#include <curl/curl.h>

#include "update/http_log.h"
#include "update/pipe_signal.h"

namespace bw {
namespace {

using End = HttpRequest::End;

constexpr const char* kAgent = "WinInetGet/0.1";
constexpr int kMostRedirects = 5;
constexpr size_t kMostHeadBytes = size_t{300} << 10;  // of one answer, with all that come before it
constexpr int kPollSlice = 20;              // milliseconds; `cancel` is looked at between them
constexpr long kReceiveBuffer = 64L << 10;  // bytes
constexpr long kLeastSpeed = 100;           // bytes a second, for as long as patience lasts

// Once for the program, before its first request.
bool IsCurlReady() {
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready;
}

template <auto Free>
struct FreedBy {
    template <typename Handle>
    void operator()(Handle* handle) const {
        Free(handle);
    }
};
using Easy = std::unique_ptr<CURL, FreedBy<curl_easy_cleanup>>;
using Multi = std::unique_ptr<CURLM, FreedBy<curl_multi_cleanup>>;
using Lines = std::unique_ptr<curl_slist, FreedBy<curl_slist_free_all>>;
using Address = std::unique_ptr<CURLU, FreedBy<curl_url_cleanup>>;

// "Name:" with nothing behind it keeps the library from sending a field of its own.
Lines MakeFields() {
    Lines lines;
    for (const char* line : {"Cache-Control: no-cache", "Pragma: no-cache", "Accept:"}) {
        curl_slist* more = curl_slist_append(lines.get(), line);
        if (more == nullptr) return {};
        static_cast<void>(lines.release());  // `more` is the same list, or its new head
        lines.reset(more);
    }
    return lines;
}

// Where a redirect leads to, which may be told relative to where it comes from.
std::optional<HttpUrl> RedirectTarget(const HttpUrl& from, const std::string& location) {
    const Address address(curl_url());
    char* text = nullptr;
    if (!address ||
        curl_url_set(address.get(), CURLUPART_URL, from.WithoutUser().c_str(), 0) != CURLUE_OK ||
        curl_url_set(address.get(), CURLUPART_URL, location.c_str(), CURLU_URLENCODE) !=
            CURLUE_OK ||
        curl_url_get(address.get(), CURLUPART_URL, &text, 0) != CURLUE_OK) {
        return std::nullopt;
    }
    const std::unique_ptr<char, FreedBy<curl_free>> freed(text);
    return CrackUrl(text);
}

// One exchange with one host. A connection of its own: it ends with it.
class Exchange {
  public:
    Exchange(const HttpRequest& request, const HttpUrl& url, const std::atomic<bool>& cancel)
        : request_(request), cancel_(cancel), address_(url.WithoutUser()) {}
    Exchange(Exchange&&) = delete;
    ~Exchange() {
        if (added_) curl_multi_remove_handle(multi_.get(), easy_.get());
    }

    // kByUs also for a redirect.
    End Run(bool believeAnyCertificate);
    bool HasDoubtfulCertificate() const {
        // The second where this system has no list of authorities at all.
        return code_ == CURLE_PEER_FAILED_VERIFICATION || code_ == CURLE_SSL_CACERT_BADFILE;
    }
    const HttpHead& Head() const { return head_; }
    int Code() const { return code_; }

  private:
    bool Prepare(bool believeAnyCertificate);
    bool Receive();
    bool TakeHeadLine(std::string_view line);
    bool TakeBody(std::span<const uint8_t> bytes);
    static size_t OnHeadLine(char* bytes, size_t, size_t size, void* self);
    static size_t OnBody(char* bytes, size_t, size_t size, void* self);

    const HttpRequest& request_;
    const std::atomic<bool>& cancel_;
    const std::string address_;
    const NoPipeSignal noPipeSignal_;  // as long as the connection
    const Lines fields_ = MakeFields();
    Multi multi_{curl_multi_init()};
    Easy easy_{curl_easy_init()};
    bool added_ = false;
    HttpHead head_;
    size_t headBytes_ = 0;
    bool isHeadDone_ = false;
    bool isByUs_ = false;
    int code_ = CURLE_FAILED_INIT;
};

size_t Exchange::OnHeadLine(char* bytes, size_t, size_t size, void* self) {
    return static_cast<Exchange*>(self)->TakeHeadLine({bytes, size}) ? size : 0;
}

size_t Exchange::OnBody(char* bytes, size_t, size_t size, void* self) {
    const std::span<const uint8_t> part(reinterpret_cast<const uint8_t*>(bytes), size);
    return static_cast<Exchange*>(self)->TakeBody(part) ? size : 0;
}

// An empty line ends a head; answers "100 Continue" and the like come before the one that counts.
bool Exchange::TakeHeadLine(std::string_view line) {
    headBytes_ += line.size();
    if (headBytes_ > kMostHeadBytes || cancel_) return false;
    if (isHeadDone_) return true;  // fields behind a body in chunks
    if (line.find_first_not_of("\r\n") != line.npos) {
        head_.Read(line);
        return true;
    }
    if (head_.IsInterim()) return true;
    isHeadDone_ = true;
    isByUs_ = head_.IsRedirect() || !request_.onHead(head_);
    return !isByUs_;
}

bool Exchange::TakeBody(std::span<const uint8_t> bytes) {
    if (cancel_) return false;
    isByUs_ = !request_.onBody(bytes);
    return !isByUs_;
}

bool Exchange::Prepare(bool believeAnyCertificate) {
    if (!multi_ || !easy_ || !fields_) return false;
    bool isSet = true;
    const auto set = [&](CURLoption option, auto value) {
        isSet = isSet && curl_easy_setopt(easy_.get(), option, value) == CURLE_OK;
    };
    set(CURLOPT_URL, address_.c_str());
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    set(CURLOPT_USERAGENT, kAgent);
    set(CURLOPT_HTTPHEADER, fields_.get());
    if (request_.range) {
        const auto [first, size] = *request_.range;
        set(CURLOPT_RANGE,
            (std::to_string(first) + "-" + std::to_string(first + size - 1)).c_str());
    }
    set(CURLOPT_SSL_VERIFYPEER, believeAnyCertificate ? 0L : 1L);
    set(CURLOPT_SSL_VERIFYHOST, 0L);            // names are let pass at once
    set(CURLOPT_NOSIGNAL, 1L);                  // its signals would be the whole process's
    set(CURLOPT_QUICK_EXIT, 1L);                // doesn't wait for a name that is being looked up
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);  // a proxy's answers aren't the host's
    set(CURLOPT_BUFFERSIZE, kReceiveBuffer);
    set(CURLOPT_CONNECTTIMEOUT, static_cast<long>(request_.patience.count()));
    set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(request_.patience.count()));
    set(CURLOPT_LOW_SPEED_LIMIT, kLeastSpeed);
    set(CURLOPT_HEADERFUNCTION, &Exchange::OnHeadLine);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &Exchange::OnBody);
    set(CURLOPT_WRITEDATA, this);
    return isSet;
}

// False if `cancel` ended it.
bool Exchange::Receive() {
    added_ = curl_multi_add_handle(multi_.get(), easy_.get()) == CURLM_OK;
    int running = added_ ? 1 : 0;
    while (running != 0) {
        if (cancel_) return false;
        if (curl_multi_perform(multi_.get(), &running) != CURLM_OK) break;
        if (running != 0 &&
            curl_multi_poll(multi_.get(), nullptr, 0, kPollSlice, nullptr) != CURLM_OK) {
            break;
        }
    }
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi_.get(), &left);
    if (message != nullptr && message->msg == CURLMSG_DONE) code_ = message->data.result;
    return !cancel_;
}

End Exchange::Run(bool believeAnyCertificate) {
    if (!Prepare(believeAnyCertificate)) return End::kFailed;
    if (!Receive()) return End::kStopped;
    if (isByUs_) return End::kByUs;
    return code_ == CURLE_OK && isHeadDone_ ? End::kDone : End::kFailed;
}

struct Answer {
    End end = End::kFailed;
    HttpHead head = {};
};

// By one host; once more if its certificate was the reason for a failure.
Answer Ask(const HttpRequest& request, const HttpUrl& url, const std::atomic<bool>& cancel) {
    for (const bool believeAnyCertificate : {false, true}) {
        Exchange exchange(request, url, cancel);
        const End end = exchange.Run(believeAnyCertificate);
        if (end != End::kFailed) return {end, exchange.Head()};
        if (believeAnyCertificate || !exchange.HasDoubtfulCertificate()) {
            LogHttpError("SendRequest", exchange.Code());
            break;
        }
    }
    return {};
}

}  // namespace

End HttpRequest::Perform(const std::atomic<bool>& cancel) const {
    if (!IsCurlReady()) {
        LogHttpError("InternetOpen", CURLE_FAILED_INIT);
        return End::kFailed;
    }
    std::optional<HttpUrl> current = url;
    for (int redirects = 0; redirects <= kMostRedirects; ++redirects) {
        // The only protocols, whatever others the library may know.
        if (!current || !(secureOnly ? current->IsSecure() : current->IsHttp())) {
            LogHttpError("Scheme", CURLE_UNSUPPORTED_PROTOCOL);
            return End::kFailed;
        }
        const Answer answer = Ask(*this, *current, cancel);
        if (answer.end != End::kByUs || !answer.head.IsRedirect()) return answer.end;
        current = RedirectTarget(*current, answer.head.Location());
    }
    LogHttpError("SendRequest", CURLE_TOO_MANY_REDIRECTS);
    return End::kFailed;
}

}  // namespace bw
