// The dialogs on the screen.
#pragma once

#include <QString>
#include <functional>

#include "builder/output/rom_header.h"
#include "language/language.h"
#include "shell/dialogs/user_dialogs.h"

class QFileDialog;
class QWidget;

namespace bw {

// File dialogs are the desktop's own where it has some. A name without the extension of its type
// gets it, and replacing a file is asked for under the name that it gets.
class QtUserDialogs : public UserDialogs {
  public:
    // `parent` must live longer. `base`: the program's folder.
    QtUserDialogs(QWidget& parent, std::filesystem::path base, std::function<Language()> language);

    int Message(std::u16string_view text, std::u16string_view caption,
                MessageButtons buttons) override;
    std::optional<size_t> Choose(std::u16string_view text, std::u16string_view caption,
                                 std::span<const std::u16string> answers) override;
    std::vector<std::filesystem::path> AskImages(const std::filesystem::path& start) override;
    std::optional<std::filesystem::path> AskListToLoad(const std::filesystem::path& start) override;
    std::optional<std::filesystem::path> AskListToSave(const std::filesystem::path& start) override;
    std::optional<std::filesystem::path> AskDesignToOpen(
        const std::filesystem::path& start) override;
    std::optional<std::filesystem::path> AskDesignToSave(
        const std::filesystem::path& start) override;
    std::optional<std::filesystem::path> AskMenuFile(const std::filesystem::path& start) override;
    std::optional<OutputChoice> AskOutput(const std::filesystem::path& start,
                                          std::u16string_view name) override;
    std::optional<std::filesystem::path> AskFolder(const std::filesystem::path& start) override;
    // Returns at once.
    void ShowInFileManager(const std::filesystem::path& path) override;

  private:
    enum class Use { kRead, kWrite };
    void SetUp(QFileDialog& dialog, TextId title, const std::filesystem::path& start,
               Use use) const;
    std::filesystem::path StartFolder(const std::filesystem::path& wanted, Use use) const;
    QString FormatFilter(RomFormat format) const;
    RomFormat FormatOfFilter(const QString& filter) const;
    // The window that a question belongs before.
    QWidget& Front() const;
    // A file to write: the chosen name as `complete` makes it, once the user has agreed to replace
    // what is there. Nothing if the user gave up.
    std::optional<std::filesystem::path> AskTarget(
        QFileDialog& dialog,
        const std::function<std::filesystem::path(const std::filesystem::path&)>& complete);
    bool MayReplace(const std::filesystem::path& chosen, const std::filesystem::path& target);

    QWidget& parent_;
    std::filesystem::path base_;
    std::function<Language()> language_;
    RomFormat lastFormat_ = RomFormat::kNes20;
};

}  // namespace bw
