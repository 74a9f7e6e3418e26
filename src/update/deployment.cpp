#include "update/deployment.h"

#include <fmt/format.h>

namespace bw {
namespace {

std::string FileUrl(const Deployment& deployment, std::string_view file,
                    std::chrono::milliseconds since1970) {
    return fmt::format("{}/raw/master/Release/{}?{}", deployment.host, file, since1970.count());
}

}  // namespace

Deployment BuiltInDeployment() {
    return {.host = BANKWEAVER_UPDATE_HOST,
            .key = BANKWEAVER_UPDATE_KEY,
            .plainHttp = BANKWEAVER_UPDATE_PLAIN_HTTP};
}

std::string UpdateFileUrl(const Deployment& deployment, std::chrono::milliseconds since1970) {
    return FileUrl(deployment, "update.json", since1970);
}

std::string NoticeFileUrl(const Deployment& deployment, std::chrono::milliseconds since1970) {
    return FileUrl(deployment, "notify.json", since1970);
}

}  // namespace bw
