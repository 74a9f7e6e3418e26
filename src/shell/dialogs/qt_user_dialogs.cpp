#include "shell/dialogs/qt_user_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <array>
#include <utility>

#include "builder/output/rom_header.h"
#include "designer/files/design_parts.h"
#include "shell/dialogs/choice_dialog.h"
#include "shell/dialogs/message_dialog.h"
#include "shell/framework/desktop_ways.h"
#include "shell/framework/file_manager.h"
#include "shell/framework/messages.h"
#include "shell/framework/texts.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

struct OutputType {
    RomFormat format;
    TextId name;
};
constexpr std::array kOutputTypes = {OutputType{RomFormat::kNes20, TextId::kRomTypeNes},
                                     OutputType{RomFormat::kUnif, TextId::kRomTypeUnif},
                                     OutputType{RomFormat::kBinary, TextId::kRomTypeBinary}};
constexpr std::string_view kDesignExtension = "fcm";
// Games, and the archives that they come in.
constexpr std::string_view kImageExtensions =
    "nes zip 7z rar gz tar tgz tar.bz2 tbz2 tar.xz txz tar.zst tzst";

QString Extension(const FileType& type) {
    return ToQt(ToWide(type.extension));
}

// Collections have names in capital letters too.
QString Filter(const FileType& type) {
    QStringList patterns;
    for (const QString& extension : Extension(type).split(QLatin1Char(' '))) {
        patterns << QStringLiteral("*.") + extension;
        if (FileDialogsTellCase()) patterns << QStringLiteral("*.") + extension.toUpper();
    }
    return QStringLiteral("%1 (%2)").arg(ToQt(type.name), patterns.join(QLatin1Char(' ')));
}

size_t ChosenType(const QFileDialog& dialog, const FileQuestion& question) {
    const auto index = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
    return index < 0 ? question.type : static_cast<size_t>(index);
}

std::optional<std::filesystem::path> Ask(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return PathFromQt(dialog.selectedFiles().front());
}

std::optional<std::filesystem::path> PathOf(std::optional<FileChoice> choice) {
    return choice ? std::optional(std::move(choice->path)) : std::nullopt;
}

}  // namespace

QtUserDialogs::QtUserDialogs(QWidget& parent, std::filesystem::path base,
                             std::function<Language()> language)
    : parent_(parent), base_(std::move(base)), language_(std::move(language)) {}

int QtUserDialogs::Message(std::u16string_view text, std::u16string_view caption,
                           MessageButtons buttons) {
    return CMessageDialog::Show(&Front(), text, caption, buttons, language_());
}

std::optional<size_t> QtUserDialogs::Choose(std::u16string_view text, std::u16string_view caption,
                                            std::span<const std::u16string> answers) {
    return CChoiceDialog::Ask(&Front(), text, caption, answers, language_());
}

// A command can come by the tray or by a key while a dialog is open: behind that one a question
// couldn't be seen.
QWidget& QtUserDialogs::Front() const {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal != nullptr) return *modal;
    QWidget* active = QApplication::activeWindow();
    const bool own = active != nullptr && active->parentWidget() == &parent_;
    return own && active->isVisible() ? *active : parent_;
}

// Where the program is installed for everybody its own folder is of no use to its user; who starts
// it out of a source tree may know a better one.
std::filesystem::path QtUserDialogs::StartFolder(const std::filesystem::path& wanted,
                                                 Use use) const {
    const QFileInfo asked(PathToQt(wanted));
    if (!wanted.empty() && asked.isDir() && (use == Use::kRead || asked.isWritable())) {
        return wanted;
    }
    const QString places[] = {qEnvironmentVariable("BANKWEAVER_FILES"), PathToQt(base_),
                              QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)};
    for (const QString& place : places) {
        const QFileInfo folder(place);
        if (folder.isDir() && folder.isWritable()) return PathFromQt(place);
    }
    return PathFromQt(QDir::homePath());
}

void QtUserDialogs::SetUp(QFileDialog& dialog, const FileQuestion& question, Use use) const {
    dialog.setWindowTitle(ToQt(question.title));
    dialog.setDirectory(PathToQt(StartFolder(question.start, use)));
    if (question.types.empty()) return;
    QStringList filters;
    for (const FileType& type : question.types)
        filters << Filter(type);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters[static_cast<qsizetype>(question.type)]);
}

FileQuestion QtUserDialogs::Question(TextId title, const std::filesystem::path& start,
                                     std::vector<FileType> types) const {
    return {LoadText(title, language_()), start, std::move(types)};
}

FileQuestion QtUserDialogs::Question(TextId title, const std::filesystem::path& start,
                                     TextId typeName, std::string_view extension) const {
    return Question(title, start, {{LoadText(typeName, language_()), std::string(extension)}});
}

std::optional<FileChoice> QtUserDialogs::AskFileToOpen(const FileQuestion& question) {
    QFileDialog dialog(&Front());
    SetUp(dialog, question, Use::kRead);
    dialog.setFileMode(QFileDialog::ExistingFile);
    auto chosen = Ask(dialog);
    if (!chosen) return std::nullopt;
    return FileChoice{*std::move(chosen), ChosenType(dialog, question)};
}

std::optional<FileChoice> QtUserDialogs::AskFileToSave(const FileQuestion& question) {
    QFileDialog dialog(&Front());
    SetUp(dialog, question, Use::kWrite);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const auto complete = [&] {
        dialog.setDefaultSuffix(Extension(question.types[ChosenType(dialog, question)]));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, complete);
    complete();
    // With a name in the box the mouse is enough. After the types, which would add a suffix to it.
    if (!question.name.empty()) dialog.selectFile(ToQt(question.name));
    while (const auto chosen = Ask(dialog)) {
        const size_t type = ChosenType(dialog, question);
        FileChoice choice{WithPartExtension(*chosen, question.types[type].extension), type};
        if (MayReplace(*chosen, choice.path)) return choice;
    }
    return std::nullopt;
}

std::vector<std::filesystem::path> QtUserDialogs::AskImages(const std::filesystem::path& start) {
    QFileDialog dialog(&Front());
    SetUp(dialog, Question(TextId::kAddGames, start, TextId::kNesGames, kImageExtensions),
          Use::kRead);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    std::vector<std::filesystem::path> files;
    if (dialog.exec() != QDialog::Accepted) return files;
    for (const QString& file : dialog.selectedFiles())
        files.push_back(PathFromQt(file));
    return files;
}

std::optional<std::filesystem::path> QtUserDialogs::AskListToLoad(
    const std::filesystem::path& start) {
    return PathOf(AskFileToOpen(Question(TextId::kLoadList, start, TextId::kGameLists, "fcl")));
}

std::optional<std::filesystem::path> QtUserDialogs::AskListToSave(
    const std::filesystem::path& start) {
    return PathOf(AskFileToSave(Question(TextId::kSaveList, start, TextId::kGameLists, "fcl")));
}

std::optional<std::filesystem::path> QtUserDialogs::AskDesignToOpen(
    const std::filesystem::path& start) {
    return PathOf(AskFileToOpen(
        Question(TextId::kOpenDesign, start, TextId::kDesignFiles, kDesignExtension)));
}

std::optional<std::filesystem::path> QtUserDialogs::AskDesignToSave(
    const std::filesystem::path& start) {
    return PathOf(AskFileToSave(
        Question(TextId::kSaveDesign, start, TextId::kDesignFiles, kDesignExtension)));
}

std::optional<std::filesystem::path> QtUserDialogs::AskMenuFile(
    const std::filesystem::path& start) {
    return PathOf(
        AskFileToOpen(Question(TextId::kChooseMenu, start, {{u"asm", "asm"}, {u"nes", "nes"}})));
}

std::optional<OutputChoice> QtUserDialogs::AskOutput(const std::filesystem::path& start,
                                                     std::u16string_view name) {
    FileQuestion question = Question(TextId::kSaveRom, start);
    for (const OutputType& type : kOutputTypes) {
        question.types.push_back(
            {LoadText(type.name, language_()), std::string(FormatExtension(type.format))});
    }
    question.type = lastFormat_;
    question.name = name;
    auto choice = AskFileToSave(question);
    if (!choice) return std::nullopt;
    lastFormat_ = choice->type;
    return OutputChoice{std::move(choice->path), kOutputTypes[lastFormat_].format};
}

std::optional<std::filesystem::path> QtUserDialogs::AskFolder(const std::filesystem::path& start) {
    QFileDialog dialog(&Front());
    SetUp(dialog, Question(TextId::kChooseFolder, start), Use::kWrite);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return Ask(dialog);
}

// The dialog has asked for the chosen name, but not for the one that the extension makes of it.
bool QtUserDialogs::MayReplace(const std::filesystem::path& chosen,
                               const std::filesystem::path& target) {
    std::error_code error;
    if (target == chosen || !std::filesystem::exists(target, error)) return true;
    const Language language = language_();
    const std::u16string format = LoadText(TextId::kReplaceExisting, language);
    return Message(FormatText(format, PathText(target)), LoadText(TextId::kWarnTitle, language),
                   MessageButtons::kYesNo) == kEndYes;
}

void QtUserDialogs::ShowInFileManager(const std::filesystem::path& path) {
    bw::ShowInFileManager(path, parent_, [this](const std::filesystem::path& folder) {
        const Language language = language_();
        Message(FormatText(LoadText(TextId::kCantShowFolder, language), PathText(folder)),
                LoadText(TextId::kErrorTitle, language), MessageButtons::kConfirm);
    });
}

}  // namespace bw
