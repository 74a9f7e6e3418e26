#include "shell/dialogs/names_dialog.h"

#include <QScreen>
#include <algorithm>
#include <utility>

#include "shell/framework/placement.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view kKey = "Software\\Bankweaver\\Names";
constexpr std::string_view kTidyToo = "TidyToo";
constexpr QSize kLeastSize(560, 400);
constexpr QSize kFirstSize(900, 600);

// Rows that are named without a look at the clock, and the time of one turn.
constexpr size_t kAtOnce = 128;
constexpr auto kTurn = 15ms;
// What is done by then shows without a turn.
constexpr auto kFirstTurn = 80ms;

enum Control : int {
    kTable = 1211,
    kTags = 1212,
    kItself = 1213,
    kTidyTooBox = 1214,
    kAll = 1215,
    kInverse = 1216,
    kCounts = 1217,
    kUnfound = 1218,
    kFirstBox = 1220,
    kOk = kEndOk,
    kCancel = kEndCancel,
};

// The boxes in their order: those of the tags, those of the names themselves, and the last one,
// which is no rule of tidying.
struct RuleBox {
    const char* setting;
    TextId text;
    bool TidyRules::*rule;
};
constexpr size_t kTagBoxes = 5;
constexpr std::array<RuleBox, CNamesDialog::kRules> kBoxes{{
    {"DropRegion", TextId::kTagRegion, &TidyRules::dropRegion},
    {"DropLanguage", TextId::kTagLanguage, &TidyRules::dropLanguage},
    {"DropRevision", TextId::kTagRevision, &TidyRules::dropRevision},
    {"DropDump", TextId::kTagDump, &TidyRules::dropDump},
    {"DropOther", TextId::kTagOther, &TidyRules::dropOther},
    {"Underscores", TextId::kUnderscoresGo, &TidyRules::underscores},
    {"Articles", TextId::kArticlesInFront, &TidyRules::articles},
    {"Blanks", TextId::kOneBlank, &TidyRules::blanks},
    {"Shorten", TextId::kShortenNames, nullptr},
}};

bool StoredSwitch(const SettingsStore& store, std::string_view name, bool otherwise) {
    uint32_t value = otherwise ? 1 : 0;
    store.RegReadDword(kKey, name, value);
    return value != 0;
}

}  // namespace

CNamesDialog::CNamesDialog(const GameList& games, std::vector<uint32_t> rows,
                           std::optional<DatabaseNames> database, const ConsoleMenu& menu,
                           SettingsStore& store, Language language, QWidget* parent)
    : CDialogBase(language, parent),
      games_(games),
      rows_(std::move(rows)),
      database_(std::move(database)),
      store_(store),
      model_(games, menu, language),
      table_(model_) {
    setWindowFlags(Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    AddControl(kTidyTooBox, tidyToo_);
    AddControl(kTags, tags_);
    AddControl(kItself, itself_);
    for (size_t i = 0; i < kRules; ++i)
        AddControl(kFirstBox + static_cast<int>(i), boxes_[i]);
    AddControl(kUnfound, unfound_);
    AddControl(kTable, table_);
    AddControl(kAll, all_);
    AddControl(kInverse, inverse_);
    AddControl(kCounts, counts_);
    AddControl(kOk, ok_);
    AddControl(kCancel, cancel_);
    Arrange();
    connect(&model_, &QAbstractItemModel::dataChanged, this, [this] { ShowCounts(); });
    connect(&work_, &QTimer::timeout, this, [this] { GoOn(Clock::now() + kTurn); });
    setMinimumSize(kLeastSize);
    resize(kFirstSize);
}

void CNamesDialog::Arrange() {
    for (size_t i = 0; i < kRules; ++i) {
        const auto place = static_cast<int>(i < kTagBoxes ? i : i - kTagBoxes);
        (i < kTagBoxes ? tagsGrid_ : itselfGrid_).addWidget(&boxes_[i], place / 2, place % 2);
    }
    rules_.addWidget(&tags_);
    rules_.addWidget(&itself_);
    rules_.addStretch(1);
    counts_.setWordWrap(true);
    unfound_.setWordWrap(true);
    unfound_.setVisible(database_.has_value());
    tidyToo_.setVisible(database_.has_value());
    // Return is the default button's.
    for (QPushButton* button : {&all_, &inverse_})
        button->setAutoDefault(false);
    row_.addWidget(&all_);
    row_.addWidget(&inverse_);
    row_.addWidget(&counts_, 1);
    row_.addWidget(&ok_);
    row_.addWidget(&cancel_);
    layout_.addWidget(&tidyToo_);
    layout_.addLayout(&rules_);
    layout_.addWidget(&unfound_);
    layout_.addWidget(&table_, 1);
    layout_.addLayout(&row_);
    ok_.setDefault(true);
    table_.setFocus();
}

const MessageTable& CNamesDialog::Table() const {
    static const std::vector<MessageEntry> entries = [] {
        std::vector<MessageEntry> made{
            OnMessage(kMessageInitDialog, &CNamesDialog::OnInit),
            OnCommand(kAll, &CNamesDialog::OnAll),
            OnCommand(kInverse, &CNamesDialog::OnInverse),
            OnCommand(kOk, &CNamesDialog::OnOk),
            OnCommand(kCancel, &CNamesDialog::OnCancel),
            OnMessage(kMessageClose, &CNamesDialog::OnClose),
        };
        const MessageHandler begin = [](MessageTarget& target, MessageParam, MessageParam) {
            static_cast<CNamesDialog&>(target).Begin();
            return MessageResult{1};
        };
        made.push_back({begin, kMessageCommand, kTidyTooBox});
        for (size_t i = 0; i < kRules; ++i)
            made.push_back({begin, kMessageCommand, kFirstBox + static_cast<int>(i)});
        return made;
    }();
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CNamesDialog::ApplyTexts() {
    const Language language = UiLanguage();
    setWindowTitle(database_ ? TitleOfEntry(TextId::kNamesFromDatEntry, language) +
                                   QStringLiteral(" - ") + ToQt(database_->title)
                             : TitleOfEntry(TextId::kTidyNamesEntry, language));
    SetTextId(kTidyTooBox, TextId::kTidyToo);
    SetTextId(kTags, TextId::kTagsThatGo);
    SetTextId(kItself, TextId::kNamesThemselves);
    for (size_t i = 0; i < kRules; ++i)
        SetTextId(kFirstBox + static_cast<int>(i), kBoxes[i].text);
    SetTextId(kAll, TextId::kSelectAll);
    SetTextId(kInverse, TextId::kSelectInverse);
    SetTextId(kOk, TextId::kAnswerConfirm);
    SetTextId(kCancel, TextId::kCancel);
    table_.setAccessibleName(windowTitle());
    model_.SetLanguage(language);
    ShowCounts();
}

void CNamesDialog::Place() {
    table_.FitColumns();
    if (StoredPlacement(store_, kKey)) {
        RestorePlacement(store_, kKey, *this);
    } else {
        resize(kFirstSize.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize()));
        Centre();
    }
}

TidyRules CNamesDialog::Rules() const {
    TidyRules rules;
    for (size_t i = 0; i < kRules; ++i) {
        if (kBoxes[i].rule != nullptr) rules.*kBoxes[i].rule = boxes_[i].isChecked();
    }
    return rules;
}

void CNamesDialog::Begin() {
    const bool tidies = !database_ || tidyToo_.isChecked();
    tags_.setEnabled(tidies);
    for (size_t i = kTagBoxes; i + 1 < kRules; ++i)
        boxes_[i].setEnabled(tidies);
    done_ = 0;
    made_ = {};
    work_.start(0);
    GoOn(Clock::now() + kFirstTurn);
}

void CNamesDialog::AddSome() {
    const std::span rows = std::span(rows_).subspan(done_, std::min(kAtOnce, rows_.size() - done_));
    const std::span rooms = Shortens() ? model_.Rooms() : std::span<const size_t>();
    DatChanges some;
    if (database_) {
        const auto from = database_->sums.begin() + static_cast<ptrdiff_t>(done_);
        const RowSums sums(from, from + static_cast<ptrdiff_t>(rows.size()));
        const std::optional<TidyRules> tidy =
            tidyToo_.isChecked() ? std::optional(Rules()) : std::nullopt;
        some = NamesFromDat(games_, rows, sums, database_->names, tidy, rooms);
    } else {
        some.changes = TidyChanges(games_, rows, Rules(), rooms);
    }
    std::ranges::move(some.changes, std::back_inserter(made_.changes));
    made_.unknown += some.unknown;
    made_.unread += some.unread;
    made_.same += some.same;
    done_ += rows.size();
}

void CNamesDialog::GoOn(Clock::time_point until) {
    while (done_ < rows_.size()) {
        AddSome();
        if (Clock::now() >= until && done_ < rows_.size()) return;
    }
    work_.stop();
    model_.SetChanges(std::exchange(made_.changes, {}));
    ShowCounts();
}

void CNamesDialog::ShowCounts() {
    const Language language = UiLanguage();
    const NamesTableModel::Counts counts = model_.Count();
    QString words = counts.all == 0
                        ? QtText(TextId::kNoNameChanges, language)
                        : QtText(TextId::kNamesTaken, language).arg(counts.taken).arg(counts.all);
    if (counts.tooLong > 0) words += QtText(TextId::kNamesTooLong, language).arg(counts.tooLong);
    counts_.setText(words);
    ok_.setEnabled(counts.taken > 0);
    all_.setEnabled(counts.all > 0);
    inverse_.setEnabled(counts.all > 0);
    if (work_.isActive()) return;
    unfound_.setText(
        QtText(TextId::kDatCounts, language).arg(made_.unknown).arg(made_.unread).arg(made_.same));
}

void CNamesDialog::StoreRules() {
    for (size_t i = 0; i < kRules; ++i)
        StoreNumber(store_, kKey, kBoxes[i].setting, boxes_[i].isChecked() ? 1 : 0);
    if (database_) StoreNumber(store_, kKey, kTidyToo, tidyToo_.isChecked() ? 1 : 0);
    StorePlacement(store_, kKey, *this);
}

MessageResult CNamesDialog::OnInit(MessageParam, MessageParam) {
    for (size_t i = 0; i < kRules; ++i)
        boxes_[i].setChecked(StoredSwitch(store_, kBoxes[i].setting, kBoxes[i].rule != nullptr));
    tidyToo_.setChecked(StoredSwitch(store_, kTidyToo, false));
    Begin();
    return 1;
}

MessageResult CNamesDialog::OnAll(MessageParam, MessageParam) {
    model_.SetTaken(true);
    return 1;
}

MessageResult CNamesDialog::OnInverse(MessageParam, MessageParam) {
    model_.TurnTaken();
    return 1;
}

MessageResult CNamesDialog::OnOk(MessageParam, MessageParam) {
    // The last change of a rule counts, even if its names don't show yet.
    if (work_.isActive()) GoOn(Clock::time_point::max());
    StoreRules();
    End(kEndOk);
    return 1;
}

MessageResult CNamesDialog::OnCancel(MessageParam, MessageParam) {
    return Send(kMessageClose, kEndCancel);
}

MessageResult CNamesDialog::OnClose(MessageParam, MessageParam) {
    work_.stop();
    StoreRules();
    End(kEndCancel);
    return 1;
}

}  // namespace bw
