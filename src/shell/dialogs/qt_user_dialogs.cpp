#include "shell/dialogs/qt_user_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <array>
#include <utility>

#include "builder/output/rom_writer.h"
#include "list/list_file.h"
#include "shell/dialogs/choice_dialog.h"
#include "shell/dialogs/message_dialog.h"
#include "shell/framework/file_manager.h"
#include "shell/framework/messages.h"
#include "shell/framework/texts.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

// In the order of the output dialog's types.
constexpr std::array kFormats = {RomFormat::kNes20, RomFormat::kUnif, RomFormat::kBinary};
constexpr std::string_view kDesignExtension = "fcm";

QString Extension(RomFormat format) {
    return ToQt(ToWide(FormatExtension(format)));
}

TextId TypeText(RomFormat format) {
    switch (format) {
        case RomFormat::kUnif:
            return TextId::kRomTypeUnif;
        case RomFormat::kBinary:
            return TextId::kRomTypeBinary;
        default:
            return TextId::kRomTypeNes;
    }
}

std::filesystem::path WithDesignExtension(std::filesystem::path file) {
    if (!HasExtension(file, kDesignExtension)) file += "." + std::string(kDesignExtension);
    return file;
}

std::optional<std::filesystem::path> Ask(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return PathFromQt(dialog.selectedFiles().front());
}

void SetFilter(QFileDialog& dialog, const QString& name, const QString& extension) {
    // Collections have names in capital letters too, and some desktops' dialogs tell them apart.
    dialog.setNameFilter(
        QStringLiteral("%1 (*.%2 *.%3)").arg(name, extension, extension.toUpper()));
    dialog.setDefaultSuffix(extension);
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

QString QtUserDialogs::FormatFilter(RomFormat format) const {
    return QStringLiteral("%1 (*.%2)")
        .arg(QtText(TypeText(format), language_()), Extension(format));
}

RomFormat QtUserDialogs::FormatOfFilter(const QString& filter) const {
    for (const RomFormat format : kFormats) {
        if (filter == FormatFilter(format)) return format;
    }
    return kFormats.front();
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

void QtUserDialogs::SetUp(QFileDialog& dialog, TextId title, const std::filesystem::path& start,
                          Use use) const {
    dialog.setWindowTitle(QtText(title, language_()));
    dialog.setDirectory(PathToQt(StartFolder(start, use)));
}

std::vector<std::filesystem::path> QtUserDialogs::AskImages(const std::filesystem::path& start) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kAddGames, start, Use::kRead);
    SetFilter(dialog, QtText(TextId::kNesGames, language_()), QStringLiteral("nes"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    std::vector<std::filesystem::path> files;
    if (dialog.exec() != QDialog::Accepted) return files;
    for (const QString& file : dialog.selectedFiles())
        files.push_back(PathFromQt(file));
    return files;
}

std::optional<std::filesystem::path> QtUserDialogs::AskListToLoad(
    const std::filesystem::path& start) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kLoadList, start, Use::kRead);
    SetFilter(dialog, QtText(TextId::kGameLists, language_()), QStringLiteral("fcl"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog);
}

std::optional<std::filesystem::path> QtUserDialogs::AskListToSave(
    const std::filesystem::path& start) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kSaveList, start, Use::kWrite);
    SetFilter(dialog, QtText(TextId::kGameLists, language_()), QStringLiteral("fcl"));
    return AskTarget(dialog, WithListExtension);
}

std::optional<std::filesystem::path> QtUserDialogs::AskDesignToOpen(
    const std::filesystem::path& start) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kOpenDesign, start, Use::kRead);
    SetFilter(dialog, QtText(TextId::kDesignFiles, language_()), ToQt(ToWide(kDesignExtension)));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog);
}

std::optional<std::filesystem::path> QtUserDialogs::AskDesignToSave(
    const std::filesystem::path& start) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kSaveDesign, start, Use::kWrite);
    SetFilter(dialog, QtText(TextId::kDesignFiles, language_()), ToQt(ToWide(kDesignExtension)));
    return AskTarget(dialog, WithDesignExtension);
}

std::optional<std::filesystem::path> QtUserDialogs::AskMenuFile(
    const std::filesystem::path& start) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kChooseMenu, start, Use::kRead);
    dialog.setNameFilters(
        {QStringLiteral("asm (*.asm *.ASM)"), QStringLiteral("nes (*.nes *.NES)")});
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog);
}

std::optional<OutputChoice> QtUserDialogs::AskOutput(const std::filesystem::path& start,
                                                     std::u16string_view name) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kSaveRom, start, Use::kWrite);
    QStringList filters;
    for (const RomFormat format : kFormats)
        filters << FormatFilter(format);
    dialog.setNameFilters(filters);
    const auto choose = [&](const QString& filter) {
        dialog.setDefaultSuffix(Extension(FormatOfFilter(filter)));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, choose);
    dialog.selectNameFilter(FormatFilter(lastFormat_));
    choose(FormatFilter(lastFormat_));
    // With a name in the box the mouse is enough. After the types, which would add a suffix to it.
    dialog.selectFile(ToQt(name));
    const auto format = [&] { return FormatOfFilter(dialog.selectedNameFilter()); };
    auto target = AskTarget(dialog, [&](const std::filesystem::path& chosen) {
        return WithFormatExtension(chosen, format());
    });
    if (!target) return std::nullopt;
    lastFormat_ = format();
    return OutputChoice{*std::move(target), lastFormat_};
}

std::optional<std::filesystem::path> QtUserDialogs::AskFolder(const std::filesystem::path& start) {
    QFileDialog dialog(&parent_);
    SetUp(dialog, TextId::kChooseFolder, start, Use::kWrite);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return Ask(dialog);
}

std::optional<std::filesystem::path> QtUserDialogs::AskTarget(
    QFileDialog& dialog,
    const std::function<std::filesystem::path(const std::filesystem::path&)>& complete) {
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    while (const auto chosen = Ask(dialog)) {
        std::filesystem::path target = complete(*chosen);
        if (MayReplace(*chosen, target)) return target;
    }
    return std::nullopt;
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
