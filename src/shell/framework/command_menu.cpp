#include "shell/framework/command_menu.h"

#include "shell/framework/texts.h"

namespace bw {

CommandMenu::CommandMenu(QWidget& window, std::span<const MenuRow> rows,
                         std::function<void(int)> chosen)
    : window_(window), rows_(rows), chosen_(std::move(chosen)), bar_(&window) {
    std::vector<QMenu*> open;
    bool inRadios = false;
    for (const MenuRow& row : rows_) {
        const bool radio = row.kind == MenuRowKind::kRadio;
        if (radio && !inRadios) groups_.push_back(std::make_unique<QActionGroup>(&window));
        inRadios = radio;
        switch (row.kind) {
            case MenuRowKind::kPopup:
                popups_.push_back(std::make_unique<QMenu>());
                popups_.back()->setToolTipsVisible(true);
                if (open.empty()) {
                    bar_.addMenu(popups_.back().get());
                } else {
                    open.back()->addMenu(popups_.back().get());
                }
                open.push_back(popups_.back().get());
                break;
            case MenuRowKind::kEnd:
                open.pop_back();
                break;
            case MenuRowKind::kSeparator:
                open.back()->addSeparator();
                break;
            default:
                for (int i = 0; i < row.count; ++i)
                    AddEntry(*open.back(), row, row.id + i);
        }
    }
}

void CommandMenu::AddEntry(QMenu& popup, const MenuRow& row, int id) {
    const bool named = row.kind == MenuRowKind::kNamed;
    entries_[id] = {std::make_unique<QAction>(&window_), &popup, named};
    const std::unique_ptr<QAction>& entry = entries_[id].action;
    entry->setVisible(!named);
    entry->setObjectName(QStringLiteral("entry_%1").arg(id));
    entry->setMenuRole(QAction::NoRole);
    entry->setCheckable(row.kind == MenuRowKind::kToggle || row.kind == MenuRowKind::kRadio);
    if (row.kind == MenuRowKind::kRadio) groups_.back()->addAction(entry.get());
    entry->setEnabled(!row.greyed);
    QList<QKeySequence> keys;
    for (const QString& key : QString::fromLatin1(row.keys).split(QStringLiteral("; "))) {
        if (!key.isEmpty()) keys.append(QKeySequence(key, QKeySequence::PortableText));
    }
    entry->setShortcuts(keys);
    QObject::connect(entry.get(), &QAction::triggered, &window_, [this, id] { Choose(id); });
    popup.addAction(entry.get());
    // Keys work even where the desktop shows the menu outside of the window.
    window_.addAction(entry.get());
}

void CommandMenu::Choose(int id) {
    QAction& entry = Entry(id);
    // Qt has flipped the mark already. Marks are the business of the command's handler alone, so
    // that they come out the same whoever sends the command.
    if (entry.isCheckable() && entry.actionGroup() == nullptr) entry.toggle();
    chosen_(id);
}

void CommandMenu::SetLanguage(Language language) {
    size_t popup = 0;
    for (const MenuRow& row : rows_) {
        if (row.kind == MenuRowKind::kEnd || row.kind == MenuRowKind::kSeparator ||
            row.kind == MenuRowKind::kNamed) {
            continue;
        }
        const QString text = QtText(row.text, language);
        if (row.kind == MenuRowKind::kPopup) {
            popups_[popup++]->setTitle(text);
            continue;
        }
        Entry(row.id).setText(text);
    }
}

void CommandMenu::SetEntryText(int id, const QString& text) {
    Entry(id).setText(text);
    if (entries_.at(id).named) Entry(id).setVisible(!text.isEmpty());
}

}  // namespace bw
