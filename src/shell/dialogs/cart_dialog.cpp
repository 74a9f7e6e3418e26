#include "shell/dialogs/cart_dialog.h"

#include <QHeaderView>
#include <QScreen>
#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "shell/dialogs/cart_report.h"
#include "shell/framework/colors.h"
#include "shell/framework/commands.h"
#include "shell/framework/messages.h"
#include "shell/framework/placement.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kPlaceKey = "Software\\Bankweaver\\Cart";
constexpr std::string_view kSectorName = "Sector";  // KB
constexpr uint32_t kUsualSector = 128;              // KB
constexpr QSize kLeastSize(520, 360);
constexpr QSize kFirstSize(860, 600);
constexpr int kBarSteps = 1000;

enum Control : int {
    kTakeOut = 1321,
    kCompare = 1322,
    kSectorLabel = 1323,
    kSectors = 1324,
    kPlayButton = 1325,
    kResult = 1326,
    kFacts = 1327,
    kStop = kCommandStopTask,
};

QString Kilobytes(uint32_t bytes) {
    return QString::number(bytes / 1024) + QStringLiteral(" KB");
}

QString Place(uint32_t offset) {
    return QStringLiteral("%1").arg(offset, 7, 16, QLatin1Char('0')).toUpper();
}

}  // namespace

void CartTable::SetLanguage(Language language) {
    language_ = language;
    emit headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    if (!games_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

void CartTable::Show(std::vector<CartEntry> games) {
    beginResetModel();
    games_ = std::move(games);
    differences_.clear();
    endResetModel();
}

void CartTable::SetDifferences(const std::vector<GameDifference>& differences) {
    beginResetModel();
    differences_.clear();
    for (const GameDifference& one : differences)
        differences_[one.game] = one.bytes;
    endResetModel();
}

int CartTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(games_.size());
}

int CartTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QString CartTable::Text(size_t row, int column) const {
    const CartEntry& game = games_[row];
    switch (column) {
        case kNumber:
            return QString::number(row + 1);
        case kName:
            return ToQt(game.name);
        case kMapper:
            return QString::number(game.header.Mapper()) +
                   (game.mapperGuessed ? QStringLiteral("?") : QString());
        case kPrg:
            return Kilobytes(game.prgBytes);
        case kChr:
            return game.chrBytes == 0 ? QStringLiteral("RAM") : Kilobytes(game.chrBytes);
        case kPlaces:
            return Place(game.prgOffset) +
                   (game.chrBytes == 0 ? QString() : QStringLiteral(", ") + Place(game.chrOffset));
        case kDiffers: {
            const auto found = differences_.find(static_cast<uint32_t>(row));
            return found == differences_.end() ? QString() : QString::number(found->second);
        }
        default:
            return ToQt(NotKnownText(game, language_));
    }
}

QVariant CartTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int column = index.column();
    const bool number = column == kNumber || column == kMapper || column == kPrg ||
                        column == kChr || column == kDiffers;
    if (role == Qt::TextAlignmentRole)
        return QVariant((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::ForegroundRole && column == kDiffers) return WarningText();
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return Text(static_cast<size_t>(index.row()), column);
}

QVariant CartTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    constexpr std::array kTitles{
        TextId::kNumber, TextId::kFileName,   TextId::kMapperNumber,    TextId::kPrgRom,
        TextId::kChrRom, TextId::kCartPlaces, TextId::kBytesThatDiffer, TextId::kNotKnownColumn};
    return QtText(kTitles[static_cast<size_t>(section)], language_);
}

CCartDialog::CCartDialog(SettingsStore& store, MessageTarget& window, Language language,
                         QWidget* parent)
    : CDialogBase(language, parent), store_(store), window_(window) {
    setWindowFlags(Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    AddControl(kTakeOut, takeOut_);
    AddControl(kCompare, compare_);
    AddControl(kSectorLabel, sectorLabel_);
    AddControl(kSectors, sectors_);
    AddControl(kPlayButton, play_);
    AddControl(kResult, result_);
    AddControl(kFacts, facts_);
    AddControl(kStop, stop_);
    uint32_t stored = kUsualSector;
    store_.RegReadDword(kPlaceKey, kSectorName, stored);
    for (const uint32_t kilobytes : kSectorSizes) {
        sectors_.addItem(QStringLiteral("%1 KB").arg(kilobytes), kilobytes);
        if (kilobytes == stored) sectors_.setCurrentIndex(sectors_.count() - 1);
    }
    Arrange();
    SetBusy(false);
    setMinimumSize(kLeastSize);
    resize(kFirstSize);
}

void CCartDialog::Arrange() {
    path_.setTextFormat(Qt::PlainText);
    facts_.setTextFormat(Qt::PlainText);
    facts_.setWordWrap(true);
    table_.setObjectName(QStringLiteral("cart_table"));
    table_.setModel(&model_);
    table_.setSelectionBehavior(QAbstractItemView::SelectRows);
    table_.setSelectionMode(QAbstractItemView::SingleSelection);
    table_.setTabKeyNavigation(false);
    table_.setWordWrap(false);
    table_.setColumnHidden(CartTable::kDiffers, true);
    table_.verticalHeader()->hide();
    table_.verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    table_.horizontalHeader()->setHighlightSections(false);
    table_.horizontalHeader()->setStretchLastSection(true);
    result_.setReadOnly(true);
    result_.setTabChangesFocus(true);
    result_.hide();
    halves_.addWidget(&table_);
    halves_.addWidget(&result_);
    halves_.setChildrenCollapsible(false);
    halves_.setStretchFactor(0, 3);
    halves_.setStretchFactor(1, 1);
    progress_.setTextVisible(false);
    progressRow_.addWidget(&progress_, 1);
    progressRow_.addWidget(&stop_);
    sectorLabel_.setBuddy(&sectors_);
    for (QPushButton* button : {&takeOut_, &compare_, &play_, &stop_})
        button->setAutoDefault(false);
    row_.addWidget(&takeOut_);
    row_.addWidget(&compare_);
    row_.addWidget(&sectorLabel_);
    row_.addWidget(&sectors_);
    row_.addStretch(1);
    row_.addWidget(&play_);
    layout_.addWidget(&path_);
    layout_.addWidget(&facts_);
    layout_.addWidget(&halves_, 1);
    layout_.addLayout(&progressRow_);
    layout_.addLayout(&row_);
    table_.setFocus();
}

const MessageTable& CCartDialog::Table() const {
    static const MessageEntry entries[] = {
        OnCommand(kTakeOut, &CCartDialog::OnTakeOut),
        OnCommand(kCompare, &CCartDialog::OnCompare),
        OnCommand(kPlayButton, &CCartDialog::OnPlay),
        OnCommand(kStop, &CCartDialog::OnStop),
        OnMessage(kMessageClose, &CCartDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CCartDialog::ApplyTexts() {
    const Language language = UiLanguage();
    setWindowTitle(
        ToQt(FormatText(LoadText(TextId::kCartTitle, language), PathText(file_.filename()))));
    path_.SetLine(PathToQt(file_));
    facts_.setText(ToQt(CartFactsText(cart_, language)));
    SetTextId(kTakeOut, TextId::kCartTakeOut);
    SetTextId(kCompare, TextId::kCartCompare);
    SetTextId(kSectorLabel, TextId::kCartSectorLabel);
    SetTextId(kPlayButton, TextId::kCartPlay);
    SetTextId(kStop, TextId::kStop);
    progress_.setAccessibleName(QtText(TextId::kTaskProgress, language));
    model_.SetLanguage(language);
    FitColumns();
}

void CCartDialog::Place() {
    if (StoredPlacement(store_, kPlaceKey)) {
        RestorePlacement(store_, kPlaceKey, *this);
    } else {
        resize(kFirstSize.boundedTo(screen()->availableSize()));
        Centre();
    }
}

void CCartDialog::StorePlace() const {
    if (!IsOpen()) return;
    StorePlacement(store_, kPlaceKey, *this);
    store_.RegWriteDword(kPlaceKey, kSectorName, sectors_.currentData().toUInt());
}

void CCartDialog::ShowCart(const std::filesystem::path& file, CartContents cart) {
    file_ = file;
    cart_ = std::move(cart);
    model_.Show(cart_.games);
    table_.setColumnHidden(CartTable::kDiffers, true);
    result_.hide();
    result_.clear();
    ApplyTexts();
}

// Long names may not push what follows out of the window.
void CCartDialog::FitColumns() {
    table_.resizeColumnsToContents();
    table_.horizontalHeader()->setStretchLastSection(false);
    table_.horizontalHeader()->setStretchLastSection(true);  // takes the rest anew
    table_.setColumnWidth(CartTable::kName,
                          std::min(table_.columnWidth(CartTable::kName), kFirstSize.width() / 3));
}

void CCartDialog::SetBusy(bool busy) {
    // A button that goes takes the keyboard with it.
    if (!busy && stop_.hasFocus()) table_.setFocus();
    progress_.setRange(0, 0);
    progress_.setVisible(busy);
    stop_.setVisible(busy);
    for (QWidget* widget : std::initializer_list<QWidget*>{&takeOut_, &compare_, &sectors_})
        widget->setEnabled(!busy);
}

void CCartDialog::ShowProgress(size_t done, size_t total) {
    progress_.setRange(0, total == 0 ? 0 : kBarSteps);
    if (total > 0) progress_.setValue(static_cast<int>(std::min(done, total) * kBarSteps / total));
}

void CCartDialog::ShowResult(const std::u16string& lines) {
    result_.setPlainText(ToQt(lines));
    result_.show();
}

void CCartDialog::ShowDifferences(const CartComparison& comparison) {
    model_.SetDifferences(comparison.games);
    table_.setColumnHidden(CartTable::kDiffers, false);
    FitColumns();
    if (!comparison.games.empty())
        table_.selectRow(static_cast<int>(comparison.games.front().game));
}

MessageResult CCartDialog::OnTakeOut(MessageParam, MessageParam) {
    emit TakeOutWanted();
    return 1;
}

MessageResult CCartDialog::OnCompare(MessageParam, MessageParam) {
    emit CompareWanted(sectors_.currentData().toUInt() * 1024);
    return 1;
}

MessageResult CCartDialog::OnPlay(MessageParam, MessageParam) {
    emit PlayWanted();
    return 1;
}

MessageResult CCartDialog::OnStop(MessageParam, MessageParam) {
    window_.Send(kMessageCommand, kCommandStopTask);
    return 1;
}

MessageResult CCartDialog::OnClose(MessageParam, MessageParam) {
    StorePlace();
    End(kEndCancel);
    return 1;
}

}  // namespace bw
