#include "shell/dialogs/check_dialog.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "shell/framework/commands.h"
#include "shell/framework/messages.h"
#include "shell/framework/placement.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kPlaceKey = "Software\\Bankweaver\\Check";
constexpr QSize kLeastSize(420, 320);
constexpr QSize kFirstSize(900, 680);

enum Control : int {
    kState = 1201,
    kOnly = 1202,
    kSave = 1203,
    kText = 1204,
    kStop = kCommandStopTask,
    kAgain = kCommandCheckCart,
};

}  // namespace

void GamePicture::Show(QImage picture) {
    picture_ = std::move(picture);
    update();
}

void GamePicture::paintEvent(QPaintEvent*) {
    if (picture_.isNull()) return;
    const qreal room = std::min(width() / qreal{ConsolePicture::kWidth},
                                height() / qreal{ConsolePicture::kHeight});
    const qreal scale = room < 1 ? room : std::floor(room);
    QRectF place(0, 0, ConsolePicture::kWidth * scale, ConsolePicture::kHeight * scale);
    place.moveCenter(QRectF(rect()).center());
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, scale < 1);
    painter.drawImage(place, picture_);
}

CCheckDialog::CCheckDialog(const CheckReport& report, SettingsStore& store, MessageTarget& window,
                           Language language, QWidget* parent)
    : CDialogBase(language, parent),
      report_(report),
      store_(store),
      window_(window),
      model_(report, language),
      painter_(model_) {
    setWindowFlags(Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    AddControl(kState, state_);
    AddControl(kStop, stop_);
    AddControl(kAgain, again_);
    AddControl(kOnly, only_);
    AddControl(kSave, save_);
    AddControl(kText, text_);
    Arrange();
    connect(&sheet_, &QListView::clicked, this, &CCheckDialog::Choose);
    connect(&sheet_, &QListView::activated, this, &CCheckDialog::Choose);
    connect(sheet_.selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CCheckDialog::ShowChosen);
    setMinimumSize(kLeastSize);
    resize(kFirstSize);
}

void CCheckDialog::Arrange() {
    // Return belongs to the sheet.
    for (QPushButton* button : {&stop_, &again_, &save_})
        button->setAutoDefault(false);
    stateRow_.addWidget(&state_, 1);
    stateRow_.addWidget(&progress_);
    stateRow_.addWidget(&stop_);
    stateRow_.addWidget(&again_);
    choiceRow_.addWidget(&only_);
    choiceRow_.addStretch(1);
    choiceRow_.addWidget(&save_);
    progress_.setTextVisible(false);
    progress_.setFixedWidth(160);

    sheet_.setObjectName(QStringLiteral("check_sheet"));
    sheet_.setViewMode(QListView::IconMode);
    sheet_.setMovement(QListView::Static);
    sheet_.setResizeMode(QListView::Adjust);
    sheet_.setUniformItemSizes(true);
    sheet_.setVerticalScrollMode(QListView::ScrollPerPixel);
    sheet_.setSelectionMode(QListView::SingleSelection);
    sheet_.setItemDelegate(&painter_);
    sheet_.setModel(&model_);
    text_.setReadOnly(true);
    text_.setTabChangesFocus(true);
    detailsRow_.setContentsMargins(0, 0, 0, 0);
    detailsRow_.addWidget(&picture_);
    detailsRow_.addWidget(&text_, 1);
    halves_.addWidget(&sheet_);
    halves_.addWidget(&details_);
    halves_.setChildrenCollapsible(false);
    halves_.setStretchFactor(0, 1);
    layout_.addLayout(&stateRow_);
    layout_.addLayout(&choiceRow_);
    layout_.addWidget(&halves_, 1);
    sheet_.setFocus();
}

const MessageTable& CCheckDialog::Table() const {
    static const MessageEntry entries[] = {
        OnCommand(kStop, &CCheckDialog::OnStop),          OnCommand(kAgain, &CCheckDialog::OnAgain),
        OnCommand(kOnly, &CCheckDialog::OnOnly),          OnCommand(kSave, &CCheckDialog::OnSave),
        OnMessage(kMessageClose, &CCheckDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CCheckDialog::ApplyTexts() {
    const Language language = UiLanguage();
    model_.SetLanguage(language);
    SetTextId(kStop, TextId::kStop);
    SetTextId(kAgain, TextId::kCheckAgain);
    SetTextId(kOnly, TextId::kOnlyFindings);
    SetTextId(kSave, TextId::kSaveSheetButton);
    progress_.setAccessibleName(QtText(TextId::kTaskProgress, language));
    sheet_.setAccessibleName(QtText(TextId::kCheckPictures, language));
    TellState();
    ShowChosen();
}

void CCheckDialog::Place() {
    if (StoredPlacement(store_, kPlaceKey)) {
        RestorePlacement(store_, kPlaceKey, *this);
    } else {
        resize(kFirstSize.boundedTo(screen()->availableSize()));
        Centre();
    }
}

void CCheckDialog::StorePlace() const {
    if (IsOpen()) StorePlacement(store_, kPlaceKey, *this);
}

void CCheckDialog::Renew() {
    painter_.ForgetPictures();
    model_.Renew();
    chosen_.reset();
    TellState();
    ShowChosen();
}

void CCheckDialog::TellChecked(size_t game) {
    painter_.ForgetPicture(game);
    model_.TellChanged(game);
    if (chosen_ == game) ShowChosen();
    TellState();
}

void CCheckDialog::TellState() {
    setWindowTitle(
        QtText(TextId::kCheckTitle, UiLanguage()).arg(ToQt(ToWide(BoardName(report_.board)))));
    const bool running = report_.state == CheckReport::State::kRunning;
    state_.SetLine(ToQt(StateLine(report_, UiLanguage())));
    progress_.setRange(0, static_cast<int>(report_.games.size()));
    progress_.setValue(static_cast<int>(report_.done));
    progress_.setVisible(running);
    // A button that goes takes the keyboard with it.
    if (!running && stop_.hasFocus()) sheet_.setFocus();
    stop_.setVisible(running);
    again_.setVisible(!running);
    save_.setEnabled(report_.done > 0);
}

void CCheckDialog::ShowChosen() {
    const ReportGame* one = model_.GameAt(sheet_.currentIndex().row());
    chosen_ = one == nullptr ? std::nullopt : std::optional<size_t>(one->game.index);
    picture_.Show(one == nullptr ? QImage() : one->picture.Image());
    QString text;
    if (one != nullptr) {
        text = ToQt(one->game.name) + QStringLiteral("\n\n") + GameText(*one, UiLanguage());
    } else if (only_.isChecked() && model_.rowCount() == 0) {
        text = QtText(TextId::kNothingFoundYet, UiLanguage());
    }
    text_.setPlainText(text);
}

void CCheckDialog::Choose(const QModelIndex& index) {
    if (const ReportGame* one = model_.GameAt(index.row())) emit GameChosen(one->game.index);
}

MessageResult CCheckDialog::OnStop(MessageParam, MessageParam) {
    window_.Send(kMessageCommand, kCommandStopTask);
    return 1;
}

MessageResult CCheckDialog::OnAgain(MessageParam, MessageParam) {
    window_.Send(kMessageCommand, kCommandCheckCart);
    return 1;
}

MessageResult CCheckDialog::OnOnly(MessageParam, MessageParam) {
    const std::optional<size_t> before = chosen_;
    model_.ShowFindingsOnly(only_.isChecked());
    const std::optional<int> row = before ? model_.RowOf(*before) : std::nullopt;
    sheet_.setCurrentIndex(row ? model_.index(*row) : QModelIndex());
    ShowChosen();
    return 1;
}

MessageResult CCheckDialog::OnSave(MessageParam, MessageParam) {
    emit SaveWanted();
    return 1;
}

MessageResult CCheckDialog::OnClose(MessageParam, MessageParam) {
    StorePlace();
    End(kEndCancel);
    return 1;
}

}  // namespace bw
