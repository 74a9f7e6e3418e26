#include "update/notice_record.h"

#include "update/json_file.h"

namespace bw {

NoticeRecord ReadNoticeRecord(std::string_view json) {
    NoticeRecord record;
    const JsonKey keys[] = {{"notify_id", &record.notify_id},
                            {"restart_show", &record.restart_show},
                            {"for_users_type", &record.for_users_type},
                            {"notify_message", &record.notify_message}};
    return ReadJsonFile(json, keys) ? record : NoticeRecord{};
}

}  // namespace bw
