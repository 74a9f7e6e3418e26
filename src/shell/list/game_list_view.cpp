#include "shell/list/game_list_view.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "shell/framework/texts.h"
#include "shell/list/cell_editor.h"
#include "shell/list/filter_bar.h"
#include "shell/list/list_input.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kWidestColumn = 2000;  // of stored widths, in pixels
constexpr int kMargin = 4;

// The in-place editor's number of the column; that of the remark isn't the list's.
constexpr int kEditName = 1;
constexpr int kEditRemark = 8;

bool SameTexts(const GameEntry& a, const GameEntry& b) {
    return a.path == b.path && a.name == b.name && a.remark == b.remark;
}

}  // namespace

class GameListView::Parts {
  public:
    Parts(GameListView& view, ListEditor& editor, std::filesystem::path base, Language language)
        : view_(view),
          base_(std::move(base)),
          editor_(editor),
          model_(editor, language),
          filter_(language),
          table_(model_),
          cell_(table_.viewport()),
          input_(table_, model_, editor) {}

    void Connect();
    void SetLanguage(Language language);
    void ShowState();
    void ShowEmptyNote();
    void Filter(const QString& text);
    void BeginEdit(int viewRow, ListColumn column);
    void PlaceEditor();
    // Back to what was in view before the editor's column was brought there.
    void GiveViewBack();
    void FollowEdit(ListChange change);
    void Highlight(const ListResult& result);
    void Refresh(const ListResult& result);
    void TellFolder(int viewRow, bool select);

    GameListView& view_;
    std::filesystem::path base_;
    ListEditor& editor_;
    GameListModel model_;
    FilterBar filter_;
    GameTable table_;
    CellEditor cell_;
    ListInput input_;

    bool editActive_ = false;
    size_t editRow_ = 0;
    int editColumn_ = kEditName;
    GameEntry editEntry_;  // texts of editRow_ when the editing began
    // The table's place when the editing began, and the one that it went to for the column.
    int placeBefore_ = 0;
    int placeOfEdit_ = 0;
    bool known_ = false;  // the list was told of once: until then it may be on its way
};

void GameListView::Parts::Connect() {
    QObject::connect(&input_, &ListInput::EditWanted, &view_,
                     [this](int row, ListColumn column) { BeginEdit(row, column); });
    QObject::connect(&input_, &ListInput::SortWanted, &view_,
                     [this](ListColumn column) { editor_.Sort(column); });
    QObject::connect(&input_, &ListInput::FolderWanted, &view_,
                     [this](int row, bool select) { TellFolder(row, select); });
    QObject::connect(&input_, &ListInput::ContextMenuWanted, &view_,
                     &GameListView::ContextMenuWanted);
    QObject::connect(&input_, &ListInput::PlaceWanted, &view_, &GameListView::PlaceWanted);
    QObject::connect(&input_, &ListInput::RemoveWanted, &view_, &GameListView::RemoveWanted);
    QObject::connect(&table_, &GameTable::CellsMoved, &view_, [this] { PlaceEditor(); });
    // The second of two quick clicks counts like any other.
    for (const auto click : {&QHeaderView::sectionClicked, &QHeaderView::sectionDoubleClicked}) {
        QObject::connect(table_.horizontalHeader(), click, &view_,
                         [this](int column) { editor_.Sort(static_cast<ListColumn>(column)); });
    }
    QObject::connect(&filter_, &FilterBar::Changed, &view_,
                     [this](const QString& text) { Filter(text); });
    QObject::connect(&filter_, &FilterBar::Left, &view_, [this] { table_.setFocus(); });
    QObject::connect(&cell_, &CellEditor::Ended, &view_, &GameListView::EditEnded);
}

void GameListView::Parts::SetLanguage(Language language) {
    model_.SetLanguage(language);
    filter_.SetLanguage(language);
    table_.setAccessibleName(QtText(TextId::kGames, language));
    ShowEmptyNote();
}

void GameListView::Parts::ShowState() {
    const auto rows = static_cast<size_t>(model_.rowCount());
    filter_.SetCounts(rows, editor_.Games().size());
    table_.FitNumbers();
    ShowEmptyNote();
    // Titles that don't sort get no arrow, though a click on them counts as a sort.
    const int column = editor_.SortColumn();
    const bool sorts = column > static_cast<int>(ListColumn::kNumber) &&
                       column != static_cast<int>(ListColumn::kCoolgirl) &&
                       column != static_cast<int>(ListColumn::kRemark) &&
                       column != static_cast<int>(ListColumn::kConsole);
    QHeaderView& header = *table_.horizontalHeader();
    header.setSortIndicatorShown(sorts);
    header.setSortIndicator(sorts ? column : -1,
                            editor_.SortDescending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void GameListView::Parts::ShowEmptyNote() {
    QString note;
    if (known_ && !editor_.Games().empty()) {
        note = QtText(TextId::kEmptyFilter, model_.UiLanguage()).arg(ToQt(model_.Filter()));
    } else if (known_) {
        const QKeySequence open(QStringLiteral("Ctrl+O"));
        note = QtText(TextId::kEmptyList, model_.UiLanguage())
                   .arg(open.toString(QKeySequence::NativeText));
    }
    table_.SetEmptyNote(note);
}

void GameListView::Parts::Filter(const QString& text) {
    const std::optional<int> selected = table_.SelectedRow();
    const size_t row = selected ? model_.ListRow(*selected) : editor_.Games().size();
    model_.SetFilter(FromQt(text));
    if (const std::optional<int> place = model_.ViewRow(row)) {
        table_.SelectRow(*place);
        table_.RevealRow(*place);
    } else {
        table_.Deselect();
    }
    PlaceEditor();
    ShowState();
}

void GameListView::Parts::BeginEdit(int viewRow, ListColumn column) {
    view_.StoreEdit();
    const GameEntry* entry = model_.EntryAt(viewRow);
    if (entry == nullptr) return;
    const bool remark = column == ListColumn::kRemark;
    editActive_ = true;
    editRow_ = model_.ListRow(viewRow);
    editColumn_ = remark ? kEditRemark : kEditName;
    editEntry_ = *entry;
    table_.RevealRow(viewRow);
    placeBefore_ = table_.horizontalScrollBar()->value();
    table_.RevealColumn(column);
    placeOfEdit_ = table_.horizontalScrollBar()->value();
    cell_.setAccessibleName(QtText(TraitsOf(column).titleId, model_.UiLanguage()));
    cell_.Begin(ToQt(remark ? entry->remark : entry->name));
    PlaceEditor();
}

void GameListView::Parts::PlaceEditor() {
    if (!editActive_) return;
    const bool remark = editColumn_ == kEditRemark;
    cell_.Place(table_.CellRect(model_.ViewRow(editRow_),
                                remark ? ListColumn::kRemark : ListColumn::kName));
}

void GameListView::Parts::GiveViewBack() {
    QScrollBar& bar = *table_.horizontalScrollBar();
    if (bar.value() == placeOfEdit_) bar.setValue(placeBefore_);
}

// Rows that move end the editing; its text goes to the row that it was begun on, wherever that is
// now.
void GameListView::Parts::FollowEdit(ListChange change) {
    if (!editActive_ || change < ListChange::kOrder) return;
    const GameList& games = editor_.Games();
    if (editRow_ >= games.size() || !SameTexts(games[editRow_], editEntry_)) {
        const auto found = std::ranges::find_if(
            games, [&](const GameEntry& entry) { return SameTexts(entry, editEntry_); });
        if (found == games.end()) {
            editActive_ = false;
            cell_.Close();
            GiveViewBack();
            return;
        }
        editRow_ = static_cast<size_t>(found - games.begin());
    }
    cell_.End();
}

// Of several rows that have other places now none is what the user had highlighted.
void GameListView::Parts::Highlight(const ListResult& result) {
    if (result.change < ListChange::kOrder) return;
    const int rows = model_.rowCount();
    if (result.highlight > 0 && result.reveal && rows > 0) {
        const int first = std::min(model_.ViewRowFrom(*result.reveal), rows - 1);
        table_.SelectRow(first);
        if (result.highlight > 1) {
            table_.SelectRange(first + static_cast<int>(result.highlight) - 1, first);
        }
    } else if (const std::optional<int> row = table_.SelectedRow()) {
        table_.SelectRow(*row);
    } else {
        table_.Deselect();
    }
}

// A check or a text may put a row out of the filter's reach: the highlight stays with its game, or
// with the place if that doesn't show any more.
void GameListView::Parts::Refresh(const ListResult& result) {
    const std::optional<int> selected = table_.SelectedRow();
    const size_t row = selected ? model_.ListRow(*selected) : editor_.Games().size();
    const bool others = model_.Refresh(result.change);
    if (others && selected && result.change < ListChange::kOrder && model_.rowCount() > 0) {
        const int place = std::min(*selected, model_.rowCount() - 1);
        table_.SelectRow(model_.ViewRow(row).value_or(place));
    }
    Highlight(result);
}

void GameListView::Parts::TellFolder(int viewRow, bool select) {
    const GameEntry* entry = model_.EntryAt(viewRow);
    if (entry != nullptr) emit view_.FolderWanted(PathToQt(base_ / TextPath(entry->path)), select);
}

GameListView::GameListView(ListEditor& editor, std::filesystem::path base, Language language,
                           QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(*this, editor, std::move(base), language)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kMargin);
    layout->addWidget(&parts_->filter_);
    layout->addWidget(&parts_->table_, 1);
    setFocusProxy(&parts_->table_);
    parts_->Connect();
    parts_->SetLanguage(language);
    parts_->ShowState();
}

GameListView::~GameListView() = default;

void GameListView::SetLanguage(Language language) {
    parts_->SetLanguage(language);
}

void GameListView::Apply(const ListResult& result) {
    parts_->known_ = true;
    parts_->FollowEdit(result.change);
    parts_->Refresh(result);
    parts_->PlaceEditor();
    parts_->ShowState();
    if (!result.reveal) return;
    const std::optional<int> row = parts_->model_.ViewRow(*result.reveal);
    if (row) parts_->table_.RevealRow(*row);
}

std::vector<uint32_t> GameListView::HighlightedRows() const {
    std::vector<uint32_t> rows;
    for (const int row : parts_->table_.HighlightedRows())
        rows.push_back(static_cast<uint32_t>(parts_->model_.ListRow(row)));
    return rows;
}

void GameListView::ShowDropFrame(bool shown) {
    parts_->table_.ShowDropFrame(shown);
}

void GameListView::SetConsoleMenu(const ConsoleMenu& menu) {
    parts_->model_.SetConsoleMenu(menu);
}

void GameListView::SetMark(const std::u16string& path, std::optional<CheckMark> mark) {
    parts_->model_.SetMark(path, std::move(mark));
}

void GameListView::ClearMarks() {
    parts_->model_.ClearMarks();
}

ColumnWidths GameListView::Widths() const {
    ColumnWidths widths{};
    for (size_t column = 0; column < widths.size(); ++column) {
        widths[column] =
            static_cast<uint32_t>(parts_->table_.columnWidth(static_cast<int>(column)));
    }
    return widths;
}

void GameListView::SetWidths(const ColumnWidths& widths) {
    for (size_t column = 0; column < widths.size(); ++column) {
        if (widths[column] == 0) continue;
        const auto width = static_cast<int>(std::min(widths[column], kWidestColumn));
        parts_->table_.setColumnWidth(static_cast<int>(column), width);
    }
}

ListEditor::ShownRows GameListView::ShownRows() const {
    return parts_->model_.ShownRows();
}

void GameListView::FocusFilter() {
    parts_->filter_.FocusBox();
}

void GameListView::ClearFilter() {
    parts_->filter_.Clear();
}

void GameListView::ShowFindRow() {
    const size_t found = parts_->editor_.FindRow();
    if (found >= parts_->editor_.Games().size()) {
        Deselect();
        return;
    }
    if (!parts_->model_.ViewRow(found)) ClearFilter();
    const auto row = static_cast<int>(parts_->model_.ViewRow(found).value_or(0));
    parts_->table_.SelectRow(row);
    parts_->table_.RevealRow(row);
}

void GameListView::Deselect() {
    parts_->table_.Deselect();
}

bool GameListView::EditActive() const {
    return parts_->editActive_;
}

void GameListView::StoreEdit() {
    Parts& parts = *parts_;
    if (!parts.editActive_) return;
    parts.editActive_ = false;
    parts.cell_.Close();
    parts.GiveViewBack();
    const std::u16string text = FromQt(parts.cell_.text());
    if (parts.editColumn_ == kEditRemark) {
        parts.editor_.SetRemark(parts.editRow_, text);
    } else {
        parts.editor_.SetName(parts.editRow_, text);
    }
}

void GameListView::EditSelected(ListColumn column) {
    const std::optional<int> row = parts_->table_.SelectedRow();
    if (row) parts_->BeginEdit(*row, column);
}

}  // namespace bw
