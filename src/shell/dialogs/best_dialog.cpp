#include "shell/dialogs/best_dialog.h"

#include <QHeaderView>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "shell/framework/placement.h"

namespace bw {
namespace {

constexpr std::string_view kKey = "Software\\Bankweaver\\Best";
constexpr std::string_view kOrderSetting = "Order";  // the rules' numbers, a digit each
constexpr std::string_view kRegionsSetting = "Regions";
constexpr std::string_view kVersionsSetting = "Versions";
constexpr QSize kLeastSize(560, 400);
constexpr QSize kFirstSize(860, 600);
constexpr int kLongestRegions = 500;  // 16-bit units
constexpr int kRowMargin = 6;

enum Control : int {
    kOrderLabel = 1231,
    kOrder = 1232,
    kUp = 1233,
    kDown = 1234,
    kRegionsLabel = 1235,
    kRegions = 1236,
    kVersions = 1237,
    kTable = 1238,
    kCounts = 1239,
    kOk = kEndOk,
    kCancel = kEndCancel,
};

constexpr std::pair<BestRule, TextId> kRules[] = {
    {BestRule::kRegion, TextId::kBestRegion},
    {BestRule::kRevision, TextId::kBestRevision},
    {BestRule::kDump, TextId::kBestDump},
    {BestRule::kFirst, TextId::kBestFirst},
};

// The groups of the checked rows alone.
RowGroups CheckedGroups(const GameList& games, RowGroups groups) {
    for (std::vector<uint32_t>& group : groups)
        std::erase_if(group, [&](uint32_t row) { return !games[row].checked; });
    std::erase_if(groups, [](const auto& group) { return group.size() < 2; });
    return groups;
}

// All rules once, whatever the setting holds.
std::vector<BestRule> OrderFrom(std::u16string_view digits) {
    std::vector<BestRule> order;
    const auto add = [&](BestRule rule) {
        if (std::ranges::find(order, rule) == order.end()) order.push_back(rule);
    };
    for (const char16_t digit : digits) {
        if (digit >= u'0' && digit < u'0' + static_cast<int>(std::size(kRules)))
            add(static_cast<BestRule>(digit - u'0'));
    }
    for (const BestRule rule : BestRules().order)
        add(rule);
    return order;
}

}  // namespace

CBestDialog::CBestDialog(const GameList& games, SettingsStore& store, Language language,
                         QWidget* parent)
    : CDialogBase(language, parent), games_(games), store_(store), model_(games, language) {
    setWindowFlags(Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    AddControl(kOrderLabel, orderLabel_);
    AddControl(kOrder, order_);
    AddControl(kUp, up_);
    AddControl(kDown, down_);
    AddControl(kRegionsLabel, regionsLabel_);
    AddControl(kRegions, regions_);
    AddControl(kVersions, versions_);
    AddControl(kTable, table_);
    AddControl(kCounts, counts_);
    AddControl(kOk, ok_);
    AddControl(kCancel, cancel_);
    Arrange();
    ArrangeTable();
    connect(&regions_, &QLineEdit::textEdited, this, [this] { ShowBest(); });
    connect(&model_, &QAbstractItemModel::dataChanged, this, [this] { ShowCounts(); });
    // While a drag lasts the row that is pulled is there twice.
    connect(order_.model(), &QAbstractItemModel::rowsMoved, this, [this] { ShowBest(); });
    connect(order_.model(), &QAbstractItemModel::rowsRemoved, this,
            [this] { QTimer::singleShot(0, this, [this] { ShowBest(); }); });
    setMinimumSize(kLeastSize);
    resize(kFirstSize);
}

void CBestDialog::Arrange() {
    orderLabel_.setBuddy(&order_);
    regionsLabel_.setBuddy(&regions_);
    order_.setDragDropMode(QAbstractItemView::InternalMove);
    order_.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    regions_.setMaxLength(kLongestRegions);
    for (QPushButton* button : {&up_, &down_})
        button->setAutoDefault(false);
    moves_.addWidget(&up_);
    moves_.addWidget(&down_);
    moves_.addStretch(1);
    right_.addWidget(&regionsLabel_);
    right_.addWidget(&regions_);
    right_.addWidget(&versions_);
    right_.addStretch(1);
    top_.addWidget(&order_);
    top_.addLayout(&moves_);
    top_.addSpacing(2 * kRowMargin);
    top_.addLayout(&right_, 1);
    counts_.setWordWrap(true);
    row_.addWidget(&counts_, 1);
    row_.addWidget(&ok_);
    row_.addWidget(&cancel_);
    layout_.addWidget(&orderLabel_);
    layout_.addLayout(&top_);
    layout_.addWidget(&table_, 1);
    layout_.addLayout(&row_);
    ok_.setDefault(true);
    order_.setFocus();
}

void CBestDialog::ArrangeTable() {
    table_.setModel(&model_);
    table_.setSelectionBehavior(QAbstractItemView::SelectRows);
    table_.setSelectionMode(QAbstractItemView::SingleSelection);
    table_.setTabKeyNavigation(false);
    table_.setShowGrid(false);
    table_.setWordWrap(false);
    table_.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_.verticalHeader()->hide();
    table_.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_.horizontalHeader()->setHighlightSections(false);
    // Space in a row's any column is for its mark.
    connect(table_.selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (current.column() > BestTableModel::kOutcome) {
                    table_.selectionModel()->setCurrentIndex(
                        current.siblingAtColumn(BestTableModel::kOutcome),
                        QItemSelectionModel::NoUpdate);
                }
            });
}

const MessageTable& CBestDialog::Table() const {
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CBestDialog::OnInit),
        OnCommand(kUp, &CBestDialog::OnUp),
        OnCommand(kDown, &CBestDialog::OnDown),
        OnCommand(kVersions, &CBestDialog::OnVersions),
        OnCommand(kOk, &CBestDialog::OnOk),
        OnCommand(kCancel, &CBestDialog::OnCancel),
        OnMessage(kMessageClose, &CBestDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CBestDialog::ApplyTexts() {
    const Language language = UiLanguage();
    setWindowTitle(TitleOfEntry(TextId::kKeepBestEntry, language));
    SetTextId(kOrderLabel, TextId::kBestOrder);
    SetTextId(kUp, TextId::kMoveUp);
    SetTextId(kDown, TextId::kMoveDown);
    SetTextId(kRegionsLabel, TextId::kBestRegions);
    SetTextId(kVersions, TextId::kVersionsToo);
    SetTextId(kOk, TextId::kAnswerConfirm);
    SetTextId(kCancel, TextId::kCancel);
    table_.setAccessibleName(windowTitle());
    if (order_.count() > 0) ListRules(Rules().order);
    model_.SetLanguage(language);
    ShowCounts();
}

void CBestDialog::Place() {
    const QFontMetrics metrics = fontMetrics();
    const int height = metrics.height() + kRowMargin;
    table_.verticalHeader()->setMinimumSectionSize(height);
    table_.verticalHeader()->setDefaultSectionSize(height);
    QHeaderView& header = *table_.horizontalHeader();
    int outcome = 0;
    for (const TextId text : {TextId::kVersionStays, TextId::kVersionGoes}) {
        outcome = std::max(outcome, metrics.horizontalAdvance(QtText(text, UiLanguage())));
    }
    header.resizeSection(BestTableModel::kOutcome, outcome * 6 / 5 + 2 * height);
    header.resizeSection(BestTableModel::kNumber,
                         std::max(header.sectionSizeHint(BestTableModel::kNumber),
                                  metrics.horizontalAdvance(QStringLiteral("000000"))));
    header.setSectionResizeMode(BestTableModel::kName, QHeaderView::Stretch);
    header.setSectionResizeMode(BestTableModel::kPath, QHeaderView::Stretch);
    // All rules show at once.
    const int frame = 2 * order_.frameWidth();
    order_.setFixedSize(order_.sizeHintForColumn(0) + frame + 4 * kRowMargin,
                        order_.sizeHintForRow(0) * order_.count() + frame);
    if (StoredPlacement(store_, kKey)) {
        RestorePlacement(store_, kKey, *this);
    } else {
        resize(kFirstSize.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize()));
        Centre();
    }
}

void CBestDialog::ListRules(const std::vector<BestRule>& order) {
    const int current = std::max(0, order_.currentRow());
    const QSignalBlocker quiet(order_.model());
    order_.clear();
    for (const BestRule rule : order) {
        const auto found = std::ranges::find(kRules, rule, &std::pair<BestRule, TextId>::first);
        auto* item = new QListWidgetItem(QtText(found->second, UiLanguage()), &order_);
        item->setData(Qt::UserRole, static_cast<int>(rule));
    }
    order_.setCurrentRow(current);
}

BestRules CBestDialog::Rules() const {
    BestRules rules{.order = {}, .regions = {}};
    for (int i = 0; i < order_.count(); ++i) {
        rules.order.push_back(static_cast<BestRule>(order_.item(i)->data(Qt::UserRole).toInt()));
    }
    // Commas of Chinese keyboards part as well.
    QString regions = regions_.text();
    for (const QString& region : regions.replace(QChar(u'，'), u',').split(u',')) {
        if (!region.trimmed().isEmpty()) rules.regions.push_back(FromQt(region.trimmed()));
    }
    return rules;
}

void CBestDialog::ReadRules() {
    std::u16string order;
    store_.RegReadString(kKey, kOrderSetting, order);
    ListRules(OrderFrom(order));
    std::u16string regions;
    if (!store_.RegReadString(kKey, kRegionsSetting, regions)) {
        for (const std::u16string& region : BestRules().regions)
            regions += (regions.empty() ? u"" : u", ") + region;
    }
    SetText(kRegions, ToQt(regions));
    uint32_t versions = 1;
    store_.RegReadDword(kKey, kVersionsSetting, versions);
    versions_.setChecked(versions != 0);
}

void CBestDialog::StoreRules() {
    std::u16string order;
    for (const BestRule rule : Rules().order)
        order += static_cast<char16_t>(u'0' + static_cast<int>(rule));
    store_.RegWriteString(kKey, kOrderSetting, order);
    store_.RegWriteString(kKey, kRegionsSetting, GetText(kRegions));
    StoreNumber(store_, kKey, kVersionsSetting, versions_.isChecked() ? 1 : 0);
    StorePlacement(store_, kKey, *this);
}

void CBestDialog::ShowGroups() {
    groups_ = CheckedGroups(games_, versions_.isChecked() ? SameGames(games_) : SameData(games_));
    ShowBest();
}

void CBestDialog::ShowBest() {
    model_.SetGroups(groups_, Rules());
    ShowCounts();
}

void CBestDialog::ShowCounts() {
    const Language language = UiLanguage();
    const auto rows = static_cast<size_t>(model_.rowCount());
    counts_.setText(rows == 0 ? QtText(TextId::kNoneSame, language)
                              : QtText(TextId::kBestCounts, language)
                                    .arg(model_.Groups())
                                    .arg(model_.Groups())
                                    .arg(rows));
    ok_.setEnabled(rows > 0);
}

void CBestDialog::MoveRule(int by) {
    const int from = order_.currentRow();
    const int to = from + by;
    if (from < 0 || to < 0 || to >= order_.count()) return;
    std::vector<BestRule> order = Rules().order;
    std::swap(order[static_cast<size_t>(from)], order[static_cast<size_t>(to)]);
    ListRules(order);
    order_.setCurrentRow(to);
    ShowBest();
}

MessageResult CBestDialog::OnInit(MessageParam, MessageParam) {
    ReadRules();
    ShowGroups();
    return 1;
}

MessageResult CBestDialog::OnUp(MessageParam, MessageParam) {
    MoveRule(-1);
    return 1;
}

MessageResult CBestDialog::OnDown(MessageParam, MessageParam) {
    MoveRule(1);
    return 1;
}

MessageResult CBestDialog::OnVersions(MessageParam, MessageParam) {
    ShowGroups();
    return 1;
}

MessageResult CBestDialog::OnOk(MessageParam, MessageParam) {
    StoreRules();
    End(kEndOk);
    return 1;
}

MessageResult CBestDialog::OnCancel(MessageParam, MessageParam) {
    return Send(kMessageClose, kEndCancel);
}

MessageResult CBestDialog::OnClose(MessageParam, MessageParam) {
    StoreRules();
    End(kEndCancel);
    return 1;
}

}  // namespace bw
