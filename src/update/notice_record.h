// What notify.json says: a message to the program's users.
#pragma once

#include <cstdint>
#include <string_view>

#include "update/update_record.h"

namespace bw {

struct NoticeRecord {
    uint32_t notify_id = 0;
    bool restart_show = false;    // at each start of the program, whatever has been shown before
    uint32_t for_users_type = 0;  // a bit for each audience
    LanguageTexts notify_message{};

    // This program's users are the audiences of bits 0 and 3.
    bool IsForUs() const { return (for_users_type & 0b1001) != 0; }
};

// As ReadUpdateRecord. Whole numbers that don't fit a field leave it 0.
NoticeRecord ReadNoticeRecord(std::string_view json);

}  // namespace bw
