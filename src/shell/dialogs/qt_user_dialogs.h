// The dialogs on the screen.
#pragma once

#include <QString>
#include <functional>
#include <string_view>
#include <vector>

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
    std::optional<FileChoice> AskFileToOpen(const FileQuestion& question) override;
    std::optional<FileChoice> AskFileToSave(const FileQuestion& question) override;
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
    void SetUp(QFileDialog& dialog, const FileQuestion& question, Use use) const;
    std::filesystem::path StartFolder(const std::filesystem::path& wanted, Use use) const;
    // A question about one type, or about what needs none.
    FileQuestion Question(TextId title, const std::filesystem::path& start,
                          std::vector<FileType> types = {}) const;
    FileQuestion Question(TextId title, const std::filesystem::path& start, TextId typeName,
                          std::string_view extension) const;
    // The window that a question belongs before.
    QWidget& Front() const;
    bool MayReplace(const std::filesystem::path& chosen, const std::filesystem::path& target);

    QWidget& parent_;
    std::filesystem::path base_;
    std::function<Language()> language_;
    size_t lastFormat_ = 0;  // of the output's types
};

}  // namespace bw
