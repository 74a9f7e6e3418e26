#include "update/notice_flow.h"

#include <memory>

#include "settings/setting_names.h"
#include "update/plain_text.h"

namespace bw {

void NoticeFlow::Start() {
    wanted_ = true;
    if (busy_) return;
    busy_ = true;
    const auto answer = std::make_shared<std::optional<NoticeRecord>>();
    host_.StartTask(
        [answer, &source = source_,
         url = NoticeFileUrl(deployment_, host_.Since1970())](UpdateTask& task) {
            if (const auto json = source.FetchText(url, task.Stop()))
                *answer = ReadNoticeRecord(*json);
        },
        [this, answer] { Answered(*answer); });
}

void NoticeFlow::Answered(const std::optional<NoticeRecord>& answer) {
    if (!wanted_) {
        busy_ = false;
        return;
    }
    if (!answer) return;
    record_ = *answer;
    if (!record_.IsForUs()) {
        busy_ = false;
    } else if (IsToShow()) {
        host_.PostNotice();
    }
}

bool NoticeFlow::IsToShow() const {
    if (!shown_ && record_.restart_show) return true;
    uint32_t last = 0;
    store_.RegReadDword(kMainKey, setting::kLastNotifyId, last);
    return last < record_.notify_id;
}

std::u16string NoticeFlow::Text(Language language) const {
    return PlainText(TextFor(record_.notify_message, language));
}

void NoticeFlow::Shown() {
    StoreNumber(store_, kMainKey, setting::kLastNotifyId, record_.notify_id);
    shown_ = true;
    busy_ = false;
}

void NoticeFlow::NotShown() {
    busy_ = false;
}

}  // namespace bw
