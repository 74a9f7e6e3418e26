#include "shell/dialogs/fit_dialog.h"

#include <QHeaderView>
#include <QScreen>
#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "list/list_columns.h"
#include "shell/framework/colors.h"
#include "shell/framework/messages.h"
#include "shell/framework/placement.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kPlaceKey = "Software\\Bankweaver\\Fit";
constexpr QSize kLeastSize(460, 380);
constexpr QSize kFirstSize(640, 560);
constexpr int kBarSteps = 1000;

enum Control : int {
    kBoardLabel = 1301,
    kBoards = 1302,
    kTotals = 1303,
    kLeaveOutGroup = 1304,
    kNothing = 1305,
    kFewest = 1306,
    kLeastLoved = 1307,
    kFillUp = 1308,
    kUncheck = 1309,
    kCancelButton = 1310,
};
constexpr std::array kWays{kNothing, kFewest, kLeastLoved};

double Megabytes(uint64_t bytes) {
    return static_cast<double>(bytes) / (1024.0 * 1024.0);
}

// Line by line, the verdict first.
std::u16string TotalsText(const BoardFit& fit, size_t unfit, Language language) {
    const auto text = [&](TextId id, const auto&... arguments) {
        return FormatText(LoadText(id, language), arguments...);
    };
    std::u16string verdict = fit.OverBytes() > 0
                                 ? text(TextId::kFitOver, Megabytes(fit.OverBytes()))
                                 : text(TextId::kFitLeft, Megabytes(fit.LeftBytes()));
    if (fit.OverGames() > 0) verdict += u"; " + text(TextId::kFitGamesOver, fit.OverGames());
    if (unfit > 0) verdict += u"; " + text(TextId::kFitUnfit, unfit);
    return verdict + u"\n" +
           text(TextId::kFitUsed, Megabytes(fit.usedBytes), fit.limitBytes >> 20, fit.games,
                fit.gameLimit) +
           u"\n" + text(TextId::kFitParts, Megabytes(fit.dataBytes), Megabytes(fit.gapBytes));
}

}  // namespace

void FitTable::SetLanguage(Language language) {
    language_ = language;
    emit headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
}

void FitTable::Show(const GameList& games, std::vector<GameShare> shares) {
    beginResetModel();
    games_ = &games;
    shares_ = std::move(shares);
    ticked_.clear();
    endResetModel();
}

void FitTable::Tick(const std::vector<uint32_t>& rows) {
    ticked_ = {rows.begin(), rows.end()};
    if (!shares_.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
}

std::vector<uint32_t> FitTable::CantRun() const {
    std::vector<uint32_t> rows;
    for (const GameShare& share : shares_) {
        if (!share.runs) rows.push_back(share.row);
    }
    return rows;
}

int FitTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shares_.size());
}

int FitTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant FitTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const GameShare& share = shares_[static_cast<size_t>(index.row())];
    const int column = index.column();
    if (role == Qt::CheckStateRole && column == kLeaveOut)
        return ticked_.contains(share.row) ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::TextAlignmentRole && column == kAdds)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ForegroundRole && !share.runs) return WarningText();
    if (role != Qt::DisplayRole) return {};
    if (column == kLeaveOut) return QString::number(index.row() + 1);
    if (column == kName) return ToQt((*games_)[share.row].name);
    if (!share.runs) return QtText(TextId::kFitCantRun, language_);
    return QString::number((share.adds + 1023) / 1024);
}

QVariant FitTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    constexpr std::array kTitles{TextId::kFitLeaveOut, TextId::kFileName, TextId::kFitAdds};
    return QtText(kTitles[static_cast<size_t>(section)], language_);
}

Qt::ItemFlags FitTable::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == kLeaveOut ? usual | Qt::ItemIsUserCheckable : usual;
}

bool FitTable::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != kLeaveOut) return false;
    const uint32_t row = shares_[static_cast<size_t>(index.row())].row;
    if (value.toInt() == Qt::Checked) {
        ticked_.insert(row);
    } else {
        ticked_.erase(row);
    }
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit TicksChanged();
    return true;
}

CFitDialog::CFitDialog(ListEditor& editor, SettingsStore& store, BoardType board, Rows shown,
                       Language language, QWidget* parent)
    : CDialogBase(language, parent),
      editor_(editor),
      store_(store),
      settings_(LoadBuildSettings(store)),
      shown_(std::move(shown)) {
    setWindowFlags(Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    AddControl(kBoardLabel, boardLabel_);
    AddControl(kBoards, boards_);
    AddControl(kTotals, totals_);
    AddControl(kLeaveOutGroup, leaveOut_);
    for (size_t i = 0; i < ways_.size(); ++i)
        AddControl(kWays[i], ways_[i]);
    AddControl(kFillUp, fillUp_);
    AddControl(kUncheck, uncheck_);
    AddControl(kCancelButton, cancel_);
    for (const BoardType one : {settings_.CoolboyBoard(), BoardType::kCoolgirl})
        boards_.addItem(QString::fromLatin1(BoardName(one)), static_cast<int>(one));
    boards_.setCurrentIndex(board == BoardType::kCoolgirl ? 1 : 0);
    Arrange();
    connect(&boards_, &QComboBox::currentIndexChanged, this, [this] {
        Measure();
        TickProposed();
    });
    connect(&model_, &FitTable::TicksChanged, this, [this] { ShowTotals(); });
    setMinimumSize(kLeastSize);
    resize(kFirstSize);
}

void CFitDialog::Arrange() {
    boardLabel_.setBuddy(&boards_);
    boardRow_.addWidget(&boardLabel_);
    boardRow_.addWidget(&boards_);
    boardRow_.addStretch(1);
    bar_.setTextVisible(false);
    bar_.setRange(0, kBarSteps);
    totals_.setTextFormat(Qt::PlainText);
    totals_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (QRadioButton& way : ways_)
        leaveOutRow_.addWidget(&way);
    leaveOutRow_.addStretch(1);
    table_.setObjectName(QStringLiteral("fit_table"));
    table_.setModel(&model_);
    table_.setSelectionBehavior(QAbstractItemView::SelectRows);
    table_.setSelectionMode(QAbstractItemView::SingleSelection);
    table_.setTabKeyNavigation(false);
    table_.setWordWrap(false);
    table_.verticalHeader()->hide();
    table_.verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    table_.horizontalHeader()->setHighlightSections(false);
    table_.horizontalHeader()->setSectionResizeMode(FitTable::kName, QHeaderView::Stretch);
    // Return belongs to the button that does what the dialog is for.
    for (QPushButton* button : {&fillUp_, &cancel_})
        button->setAutoDefault(false);
    uncheck_.setDefault(true);
    row_.addWidget(&fillUp_);
    row_.addStretch(1);
    row_.addWidget(&uncheck_);
    row_.addWidget(&cancel_);
    layout_.addLayout(&boardRow_);
    layout_.addWidget(&bar_);
    layout_.addWidget(&totals_);
    layout_.addWidget(&leaveOut_);
    layout_.addWidget(&table_, 1);
    layout_.addLayout(&row_);
}

const MessageTable& CFitDialog::Table() const {
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CFitDialog::OnInit),
        OnCommand(kNothing, &CFitDialog::OnChoice),
        OnCommand(kFewest, &CFitDialog::OnChoice),
        OnCommand(kLeastLoved, &CFitDialog::OnChoice),
        OnCommand(kFillUp, &CFitDialog::OnFillUp),
        OnCommand(kUncheck, &CFitDialog::OnUncheck),
        OnCommand(kCancelButton, &CFitDialog::OnCancel),
        OnMessage(kMessageClose, &CFitDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CFitDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kFitTitle, UiLanguage()));
    SetTextId(kBoardLabel, TextId::kFitBoardLabel);
    SetTextId(kLeaveOutGroup, TextId::kFitLeaveOut);
    SetTextId(kNothing, TextId::kFitNothing);
    SetTextId(kFewest, TextId::kFitFewest);
    SetTextId(kLeastLoved, TextId::kFitLeastLoved);
    SetTextId(kFillUp, TextId::kFitFillUp);
    SetTextId(kUncheck, TextId::kFitUncheck);
    SetTextId(kCancelButton, TextId::kCancel);
    table_.setAccessibleName(QtText(TextId::kFitLeaveOut, UiLanguage()));
    model_.SetLanguage(UiLanguage());
    ShowTotals();
}

void CFitDialog::Place() {
    if (StoredPlacement(store_, kPlaceKey)) {
        RestorePlacement(store_, kPlaceKey, *this);
    } else {
        resize(kFirstSize.boundedTo(screen()->availableSize()));
        Centre();
    }
}

BoardType CFitDialog::Board() const {
    return static_cast<BoardType>(boards_.currentData().toInt());
}

MessageResult CFitDialog::OnInit(MessageParam, MessageParam) {
    Measure();
    const bool fits = MeasureFit(editor_.Games(), settings_, Board()).Fits();
    ways_[fits && model_.CantRun().empty() ? 0 : 1].setChecked(true);
    TickProposed();
    table_.resizeColumnToContents(FitTable::kLeaveOut);
    return 1;
}

void CFitDialog::Measure() {
    model_.Show(editor_.Games(), MeasureFit(editor_.Games(), settings_, Board()).shares);
    ShowTotals();
}

void CFitDialog::ShowTotals() {
    GameList games = editor_.Games();
    for (const uint32_t row : model_.Ticked())
        games[row].checked = false;
    const BoardFit fit = MeasureFit(games, settings_, Board());
    const auto unfit = std::ranges::count(fit.shares, false, &GameShare::runs);
    totals_.setText(ToQt(TotalsText(fit, static_cast<size_t>(unfit), UiLanguage())));
    const uint64_t part = fit.usedBytes * kBarSteps / std::max<uint64_t>(fit.limitBytes, 1);
    bar_.setValue(static_cast<int>(std::min<uint64_t>(part, kBarSteps)));
    QPalette colours;
    if (!fit.Fits()) colours.setColor(QPalette::Highlight, WarningText());
    bar_.setPalette(colours);
    uncheck_.setEnabled(!model_.Ticked().empty());
}

void CFitDialog::TickProposed() {
    std::vector<uint32_t> rows;
    if (!ways_[0].isChecked()) {
        const LeavingOut way = ways_[1].isChecked() ? LeavingOut::kFewest : LeavingOut::kLeastLoved;
        rows = RowsToLeaveOut(editor_.Games(), settings_, Board(), way);
        // They stand in a build's way just as well.
        std::ranges::copy(model_.CantRun(), std::back_inserter(rows));
    }
    model_.Tick(rows);
    ShowTotals();
}

MessageResult CFitDialog::OnChoice(MessageParam, MessageParam) {
    TickProposed();
    return 1;
}

MessageResult CFitDialog::OnFillUp(MessageParam, MessageParam) {
    std::optional<std::span<const uint32_t>> from;
    if (shown_) from = *shown_;
    const std::vector<uint32_t> rows = RowsToFillUp(editor_.Games(), settings_, Board(), from);
    editor_.SetChecks(rows, true);
    told_ = FormatText(LoadText(TextId::kFitFilledUp, UiLanguage()), rows.size());
    Measure();
    TickProposed();
    totals_.setText(totals_.text() + QLatin1Char('\n') + ToQt(told_));
    return 1;
}

MessageResult CFitDialog::OnUncheck(MessageParam, MessageParam) {
    const std::vector<uint32_t> rows(model_.Ticked().begin(), model_.Ticked().end());
    editor_.SetChecks(rows, false);
    told_ = FormatText(LoadText(TextId::kFitUnchecked, UiLanguage()), rows.size());
    StorePlacement(store_, kPlaceKey, *this);
    End(kEndOk);
    return 1;
}

MessageResult CFitDialog::OnCancel(MessageParam, MessageParam) {
    return Send(kMessageClose, kEndCancel);
}

MessageResult CFitDialog::OnClose(MessageParam, MessageParam) {
    StorePlacement(store_, kPlaceKey, *this);
    End(kEndCancel);
    return 1;
}

}  // namespace bw
