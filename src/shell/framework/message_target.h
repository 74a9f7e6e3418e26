// Windows as objects: a window class has one table that pairs messages (and, for commands, ids)
// with member functions, and chains to the table of its base class. Whoever wants something of a
// window sends it a message: a button, a menu entry, a key, a stored setting, a test.
#pragma once

#include <cstdint>
#include <span>

#include "shell/framework/messages.h"

namespace bw {

class MessageTarget;

// The parameters of a message; large enough for a pointer.
using MessageParam = intptr_t;
// A handler's result 0 passes the message on: to later entries and to the base class. A handler
// that may have destroyed its own window gives something else.
using MessageResult = intptr_t;
using MessageHandler = MessageResult (MessageTarget::*)(MessageParam wParam, MessageParam lParam);

struct MessageEntry {
    MessageHandler handler;
    int message;
    int id = 0;  // of the control or menu entry, for kMessageCommand
};

struct MessageTable {
    std::span<const MessageEntry> entries;
    const MessageTable* base = nullptr;
};

// Entries of the table of a class. `Window` derives from MessageTarget, without virtual bases.
template <typename Window>
MessageEntry OnMessage(int message, MessageResult (Window::*handler)(MessageParam, MessageParam)) {
    return {static_cast<MessageHandler>(handler), message};
}
template <typename Window>
MessageEntry OnCommand(int id, MessageResult (Window::*handler)(MessageParam, MessageParam)) {
    return {static_cast<MessageHandler>(handler), kMessageCommand, id};
}

class MessageTarget {
  public:
    virtual ~MessageTarget() = default;

    // Walks the tables until a handler gives something else than 0, which is the result. On the
    // window's thread only.
    MessageResult Send(int message, MessageParam wParam = 0, MessageParam lParam = 0) {
        for (const MessageTable* table = &Table(); table != nullptr; table = table->base) {
            for (const MessageEntry& entry : table->entries) {
                const bool meant = entry.message == message &&
                                   (message != kMessageCommand || entry.id == (wParam & 0xFFFF));
                if (!meant) continue;
                const MessageResult result = (this->*entry.handler)(wParam, lParam);
                if (result != 0) return result;
            }
        }
        return 0;
    }

  protected:
    virtual const MessageTable& Table() const = 0;
};

}  // namespace bw
