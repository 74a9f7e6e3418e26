// Windows as objects: a window class has one table that pairs messages (and, for commands, ids)
// with member functions, and chains to the table of its base class. Whoever wants something of a
// window sends it a message: a button, a menu entry, a key, a stored setting, a test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include "shell/framework/messages.h"

namespace bw {

class MessageTarget;

// The parameters of a message; large enough for a pointer.
using MessageParam = intptr_t;
// A handler's result 0 passes the message on: to later entries and to the base class. A handler
// that may have destroyed its own window gives something else.
using MessageResult = intptr_t;
// It gets the window that the message was sent to.
using MessageHandler =
    std::function<MessageResult(MessageTarget&, MessageParam wParam, MessageParam lParam)>;

struct MessageEntry {
    MessageHandler handler;
    int message;
    int id = 0;  // of the control or menu entry, for kMessageCommand

    bool Means(int sent, MessageParam wParam) const {
        return message == sent && (message != kMessageCommand || id == (wParam & 0xFFFF));
    }
};

struct MessageTable {
    std::span<const MessageEntry> entries;
    const MessageTable* base = nullptr;
};

// A member function of a class as handler. `Window` derives from MessageTarget, without virtual
// bases. Not a cast between pointers to members: UndefinedBehaviorSanitizer can't follow one to a
// base class that isn't the first.
template <typename Window>
MessageHandler HandlerOf(MessageResult (Window::*member)(MessageParam, MessageParam)) {
    return [member](MessageTarget& target, MessageParam wParam, MessageParam lParam) {
        return (static_cast<Window&>(target).*member)(wParam, lParam);
    };
}

// Entries of the table of a class.
template <typename Window>
MessageEntry OnMessage(int message, MessageResult (Window::*member)(MessageParam, MessageParam)) {
    return {HandlerOf(member), message};
}
template <typename Window>
MessageEntry OnCommand(int id, MessageResult (Window::*member)(MessageParam, MessageParam)) {
    return {HandlerOf(member), kMessageCommand, id};
}

class MessageTarget {
  public:
    virtual ~MessageTarget() = default;

    // Walks the tables until a handler gives something else than 0, which is the result. On the
    // window's thread only.
    MessageResult Send(int message, MessageParam wParam = 0, MessageParam lParam = 0) {
        for (const MessageTable* table = &Table(); table != nullptr; table = table->base) {
            for (const MessageEntry& entry : table->entries) {
                if (!entry.Means(message, wParam)) continue;
                const MessageResult result = entry.handler(*this, wParam, lParam);
                if (result != 0) return result;
            }
        }
        return 0;
    }

    // How many entries of the tables the message may come to.
    size_t CountHandlers(int message, MessageParam wParam = 0) const {
        size_t count = 0;
        for (const MessageTable* table = &Table(); table != nullptr; table = table->base) {
            for (const MessageEntry& entry : table->entries)
                count += entry.Means(message, wParam) ? 1 : 0;
        }
        return count;
    }

  protected:
    virtual const MessageTable& Table() const = 0;
};

}  // namespace bw
