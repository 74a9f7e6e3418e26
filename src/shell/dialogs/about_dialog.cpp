#include "shell/dialogs/about_dialog.h"

#include <QDesktopServices>
#include <QIcon>
#include <QUrl>

#include "shell/dialogs/message_dialog.h"
#include "shell/framework/colors.h"
#include "support/text.h"
#include "support/version.h"

namespace bw {
namespace {

constexpr int kProduct = 1031;
constexpr int kLink = 1009;
constexpr int kButton = kEndOk;

constexpr int kIconSize = 64;

}  // namespace

QString HomePage() {
    return QStringLiteral(BANKWEAVER_HOMEPAGE);
}

CAboutDialog::CAboutDialog(Language language, QWidget* parent, const QString& homePage)
    : CDialogBase(language, parent) {
    AddControl(kProduct, product_);
    AddControl(kLink, link_);
    AddControl(kButton, button_);
    SetBackground(QColor(kPaleBlue));
    SetCloseBoxAlone();
    SetStartSize(136, 112);

    icon_.setPixmap(windowIcon().pixmap(kIconSize));
    product_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    link_.setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    link_.setText(QStringLiteral("<a href=\"%1\">%1</a>").arg(homePage.toHtmlEscaped()));
    link_.setVisible(!homePage.isEmpty());
    connect(&link_, &QLabel::linkActivated, this, &CAboutDialog::FollowLink);

    layout_.addStretch();
    for (QLabel* label : {&icon_, &product_, &link_})
        layout_.addWidget(label, 0, Qt::AlignHCenter);
    layout_.addStretch();
    layout_.addWidget(&button_, 0, Qt::AlignHCenter);
    button_.setDefault(true);
    button_.setFocus();
}

const MessageTable& CAboutDialog::Table() const {
    static const MessageEntry entries[] = {OnCommand(kButton, &CAboutDialog::OnButton)};
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CAboutDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kAbout, UiLanguage()));
    SetText(kProduct,
            ToQt(FormatText(LoadText(TextId::kProductAndVersion, UiLanguage()), ProgramVersion())));
    SetTextId(kButton, TextId::kConfirm);
}

MessageResult CAboutDialog::OnButton(MessageParam, MessageParam) {
    Post(kMessageClose);
    return 1;
}

void CAboutDialog::FollowLink(const QString& target) {
    if (target == QStringLiteral("idInfo")) {
        // A target that is kept for trying links out; the same words in both languages.
        CMessageDialog::Show(this, u"This isn't much help.", u"Example", MessageButtons::kConfirm,
                             UiLanguage());
    } else {
        QDesktopServices::openUrl(QUrl(target));
    }
}

}  // namespace bw
