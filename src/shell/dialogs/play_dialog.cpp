#include "shell/dialogs/play_dialog.h"

#include <QKeyEvent>
#include <utility>

#include "console/contact_sheet.h"
#include "console/emulator_words.h"
#include "language/problem_text.h"
#include "shell/dialogs/keys_dialog.h"
#include "shell/framework/placement.h"
#include "support/text.h"

namespace bw {
namespace {

// Under kPlayKey.
constexpr std::string_view kScale = "Scale";
constexpr std::string_view kSound = "Sound";
constexpr std::string_view kPictureFolder = "PictureFolder";  // a path

constexpr uint32_t kFirstScale = 2;
constexpr int kFastKey = Qt::Key_Tab;

using enum MenuRowKind;

// clang-format off
constexpr MenuRow kRows[] = {
    {kPopup, 0, TextId::kPlayMenu},
        {kToggle, kPlayPause, TextId::kPlayPauseEntry, "Pause; F6"},
        {kEntry, kPlayStep, TextId::kPlayStepEntry, "F7"},
        {kToggle, kPlayFastForward, TextId::kPlayFastEntry, "F8"},
        {kSeparator},
        {kEntry, kPlayReset, TextId::kPlayResetEntry, "Ctrl+R"},
        {kEntry, kPlayPower, TextId::kPlayPowerEntry, "Ctrl+Shift+R"},
        {kSeparator},
        {kEntry, kPlaySavePicture, TextId::kPlayPictureEntry, "F12"},
        {kEntry, kPlayKeys, TextId::kPlayKeysEntry, "Ctrl+K"},
        {kToggle, kPlaySound, TextId::kPlaySoundEntry, "Ctrl+M"},
        {kSeparator},
        {kEntry, kPlayClose, TextId::kExitEntry, "Ctrl+W"},
    {kEnd},
    {kPopup, 0, TextId::kPlaySizeMenu},
        {kRadio, kPlaySize1, TextId::kTimes1, "Ctrl+1"},
        {kRadio, kPlaySize2, TextId::kTimes2, "Ctrl+2"},
        {kRadio, kPlaySize3, TextId::kTimes3, "Ctrl+3"},
        {kRadio, kPlaySize4, TextId::kTimes4, "Ctrl+4"},
    {kEnd},
};
// clang-format on

std::u16string ProblemWords(const ConsoleProblem& problem, Language language) {
    TextId id = TextId::kPlayEnded;
    if (problem.kind == ConsoleProblem::Kind::kNotStarted) id = TextId::kPlayNotStarted;
    if (problem.kind == ConsoleProblem::Kind::kRefused) id = TextId::kPlayRefused;
    return LoadText(id, language);
}

uint32_t StoredNumber(const SettingsStore& store, std::string_view name, uint32_t value) {
    store.RegReadDword(kPlayKey, name, value);
    return value;
}

}  // namespace

CPlayDialog::CPlayDialog(SettingsStore& store, UserDialogs& dialogs,
                         std::function<std::unique_ptr<Emulator>()> find, Language language,
                         QWidget* parent)
    : CDialogBase(language, parent),
      store_(store),
      dialogs_(dialogs),
      find_(std::move(find)),
      menu_(*this, kRows, [this](int id) { Send(kMessageCommand, id); }),
      view_(this) {
    setWindowFlags(Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setMenuBar(&menu_.Bar());
    layout_.addWidget(&view_);
    view_.setObjectName(QStringLiteral("play_view"));
    view_.installEventFilter(this);
    keys_.Load(store_);
    menu_.CheckMenuItem(kPlaySound, StoredNumber(store_, kSound, 1) != 0);
}

CPlayDialog::~CPlayDialog() {
    if (run_) ending_ = PlayRun::End(std::move(run_));
}

const MessageTable& CPlayDialog::Table() const {
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CPlayDialog::OnInit),
        OnMessage(kMessageClose, &CPlayDialog::OnClose),
        OnCommand(kPlayPause, &CPlayDialog::OnPause),
        OnCommand(kPlayStep, &CPlayDialog::OnStep),
        OnCommand(kPlayFastForward, &CPlayDialog::OnFast),
        OnCommand(kPlayReset, &CPlayDialog::OnReset),
        OnCommand(kPlayPower, &CPlayDialog::OnPower),
        OnCommand(kPlaySavePicture, &CPlayDialog::OnSavePicture),
        OnCommand(kPlayKeys, &CPlayDialog::OnKeys),
        OnCommand(kPlaySound, &CPlayDialog::OnSound),
        OnCommand(kPlaySize1, &CPlayDialog::OnSize),
        OnCommand(kPlaySize2, &CPlayDialog::OnSize),
        OnCommand(kPlaySize3, &CPlayDialog::OnSize),
        OnCommand(kPlaySize4, &CPlayDialog::OnSize),
        OnCommand(kPlayClose, &CPlayDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CPlayDialog::ApplyTexts() {
    menu_.SetLanguage(UiLanguage());
    setWindowTitle(ToQt(FormatText(LoadText(TextId::kPlayTitle, UiLanguage()), name_)));
    Follow();
}

MessageResult CPlayDialog::OnInit(MessageParam, MessageParam) {
    view_.setFocus();
    return 1;
}

void CPlayDialog::Place() {
    if (StoredPlacement(store_, kPlayKey)) return RestorePlacement(store_, kPlayKey, *this);
    SetSize(static_cast<int>(StoredNumber(store_, kScale, kFirstScale)));
    Centre();
}

void CPlayDialog::Play(const std::filesystem::path& rom, std::u16string_view name) {
    if (run_) ending_ = PlayRun::End(std::move(run_));
    rom_ = rom;
    name_ = name;
    view_.Clear();
    menu_.CheckMenuItem(kPlayPause, false);
    menu_.CheckMenuItem(kPlayFastForward, false);
    ShowModeless();
    Start();
    ApplyTexts();
}

void CPlayDialog::Start() {
    problem_.clear();
    std::unique_ptr<Emulator> emulator = find_();
    found_ = emulator != nullptr;
    if (!found_) {
        return Fail(NoEmulatorText(UiLanguage()));
    }
    run_ = std::make_unique<PlayRun>(
        std::move(emulator), rom_, [this] { Queue().Post([this] { TakeNews(); }); }, ending_);
    run_->Session().Mute(!menu_.GetMenuState(kPlaySound));
    Follow();
}

void CPlayDialog::TakeNews() {
    if (!run_) return;
    if (auto picture = run_->TakePicture()) {
        shown_ = std::move(*picture);
        problem_.clear();
        view_.Show(shown_);
        Follow();
    }
    if (const auto problem = run_->TakeProblem()) {
        Fail(ProblemWords(*problem, UiLanguage()) + u"\n" + ToWide(problem->detail) + u"\n" +
             LoadText(TextId::kPlayAgain, UiLanguage()));
    }
}

void CPlayDialog::Fail(std::u16string words) {
    problem_ = std::move(words);
    view_.Clear();
    Follow();
}

void CPlayDialog::Follow() {
    const bool paused = menu_.GetMenuState(kPlayPause);
    const bool behind = !isVisible() || isMinimized() || !isActiveWindow();
    const bool fast = fastHeld_ || menu_.GetMenuState(kPlayFastForward);
    if (LiveSession* session = Session()) {
        session->Pause(paused || behind);
        session->FastForward(fast);
    }
    const auto words = [&]() -> QString {
        if (!problem_.empty()) return ToQt(problem_);
        if (!view_.HasPicture()) return QtText(TextId::kPlayStarting, UiLanguage());
        if (behind && !paused) return QtText(TextId::kPlayPausedBehind, UiLanguage());
        return {};
    };
    view_.Say(words());
    // Over the picture they would hide what a step shows.
    const QString state = paused ? QtText(TextId::kPlayPaused, UiLanguage())
                          : fast ? QtText(TextId::kPlayFast, UiLanguage())
                                 : QString();
    const QString title = ToQt(FormatText(LoadText(TextId::kPlayTitle, UiLanguage()), name_));
    const QString whole = state.isEmpty() ? title : title + QStringLiteral(" (%1)").arg(state);
    if (windowTitle() != whole) setWindowTitle(whole);
}

// The view's keys. Those of the pads come before those of the menu, and none is repeated.
bool CPlayDialog::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            return KeyEvent(*static_cast<QKeyEvent*>(event));
        case QEvent::FocusOut:
            ReleaseKeys();
            break;
        case QEvent::Resize:
            ShowSize();
            break;
        default:
            break;
    }
    return CDialogBase::eventFilter(watched, event);
}

bool CPlayDialog::KeyEvent(QKeyEvent& event) {
    const uint32_t place =
        event.nativeScanCode() != 0 ? event.nativeScanCode() : static_cast<uint32_t>(event.key());
    const bool other = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const auto button = keys_.PlaceOf(event.key());
    const bool fast = PlayKeys::PlainKey(event.key()) == kFastKey && !button;
    if (event.type() == QEvent::KeyRelease) {
        if (event.isAutoRepeat()) return true;
        if (held_.Release(place)) SendPads();
        if (fast && std::exchange(fastHeld_, false)) Follow();
        return true;
    }
    // A modifier that is a pad's button itself comes with its own bit set.
    const bool modifier = event.key() == Qt::Key_Control || event.key() == Qt::Key_Alt;
    if ((other && !modifier) || (!button && !fast)) return false;
    event.accept();
    if (event.type() == QEvent::ShortcutOverride || event.isAutoRepeat()) return true;
    if (fast) {
        fastHeld_ = true;
        Follow();
    } else if (held_.Press(place, *button)) {
        SendPads();
    }
    return true;
}

void CPlayDialog::SendPads() {
    if (LiveSession* session = Session()) session->SetPads(held_.Pads());
}

void CPlayDialog::ReleaseKeys() {
    if (held_.ReleaseAll()) SendPads();
    if (std::exchange(fastHeld_, false)) Follow();
}

void CPlayDialog::changeEvent(QEvent* event) {
    CDialogBase::changeEvent(event);
    if (event->type() == QEvent::ActivationChange || event->type() == QEvent::WindowStateChange) {
        if (!isActiveWindow()) ReleaseKeys();
        Follow();
    }
}

void CPlayDialog::showEvent(QShowEvent* event) {
    CDialogBase::showEvent(event);
    Follow();
}

void CPlayDialog::hideEvent(QHideEvent* event) {
    CDialogBase::hideEvent(event);
    ReleaseKeys();
    Follow();
}

MessageResult CPlayDialog::OnClose(MessageParam wParam, MessageParam) {
    if (!IsOpen()) return 1;
    ReleaseKeys();
    StorePlacement(store_, kPlayKey, *this);
    if (run_) ending_ = PlayRun::End(std::move(run_));
    End(static_cast<int>(wParam));
    return 1;
}

MessageResult CPlayDialog::OnPause(MessageParam, MessageParam) {
    menu_.CheckMenuItem(kPlayPause, !menu_.GetMenuState(kPlayPause));
    Follow();
    return 1;
}

// A game that runs stops for it.
MessageResult CPlayDialog::OnStep(MessageParam, MessageParam) {
    menu_.CheckMenuItem(kPlayPause, true);
    Follow();
    if (LiveSession* session = Session()) session->Step();
    return 1;
}

MessageResult CPlayDialog::OnFast(MessageParam, MessageParam) {
    menu_.CheckMenuItem(kPlayFastForward, !menu_.GetMenuState(kPlayFastForward));
    Follow();
    return 1;
}

MessageResult CPlayDialog::OnReset(MessageParam, MessageParam) {
    if (!problem_.empty()) return OnPower(0, 0);
    if (LiveSession* session = Session()) session->Reset();
    return 1;
}

MessageResult CPlayDialog::OnPower(MessageParam, MessageParam) {
    if (!run_) {
        Start();  // the emulator may have been installed meanwhile
    } else if (problem_.empty()) {
        run_->Session().Power();
    } else {
        problem_.clear();
        run_->Session().Load(rom_);
        Follow();
    }
    return 1;
}

MessageResult CPlayDialog::OnSavePicture(MessageParam, MessageParam) {
    if (!view_.HasPicture()) return 1;
    const ConsolePicture picture = shown_;  // of the moment that was meant
    std::u16string folder;
    store_.RegReadString(kPlayKey, kPictureFolder, folder);
    const auto file = dialogs_.AskFileToSave(
        {.title = LoadText(TextId::kPlayPictureFile, UiLanguage()),
         .start = TextPath(folder),
         .types = {{LoadText(TextId::kPlayPictureFile, UiLanguage()), "png"}},
         .name = name_});
    if (!file) return 1;
    store_.RegWriteString(kPlayKey, kPictureFolder, PathText(file->path.parent_path()));
    const uint32_t scale = StoredNumber(store_, kScale, kFirstScale);
    if (const auto written = WritePicture(picture, scale, file->path); !written) {
        dialogs_.Message(ProblemText(written.Problem(), UiLanguage()),
                         LoadText(TextId::kErrorTitle, UiLanguage()), MessageButtons::kConfirm);
    }
    return 1;
}

MessageResult CPlayDialog::OnKeys(MessageParam, MessageParam) {
    CKeysDialog(keys_, store_, UiLanguage(), this).DoModal();
    ReleaseKeys();
    return 1;
}

MessageResult CPlayDialog::OnSound(MessageParam, MessageParam) {
    const bool on = !menu_.GetMenuState(kPlaySound);
    menu_.CheckMenuItem(kPlaySound, on);
    StoreNumber(store_, kPlayKey, kSound, on ? 1 : 0);
    if (LiveSession* session = Session()) session->Mute(!on);
    return 1;
}

MessageResult CPlayDialog::OnSize(MessageParam wParam, MessageParam) {
    const int scale = static_cast<int>(wParam) - kPlaySize1 + 1;
    StoreNumber(store_, kPlayKey, kScale, static_cast<uint32_t>(scale));
    SetSize(scale);
    return 1;
}

void CPlayDialog::SetSize(int scale) {
    setWindowState(windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
    const QSize bar(0, menu_.Bar().sizeHint().height());
    resize(PlayView::SizeAt(std::clamp(scale, 1, 4)) + bar);
}

// None is marked while the picture has a size between.
void CPlayDialog::ShowSize() {
    const int scale = view_.ExactScale();
    QActionGroup* group = menu_.Entry(kPlaySize1).actionGroup();
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (int id = kPlaySize1; id <= kPlaySize4; ++id)
        menu_.CheckMenuItem(id, id - kPlaySize1 + 1 == scale);
}

}  // namespace bw
