#include "shell/dialogs/export_settings_dialog.h"

#include "settings/setting_names.h"
#include "shell/framework/colors.h"

namespace bw {
namespace {

constexpr int kTypeGroup = 1086;
constexpr int kSizeGroup = 1088;
constexpr int kButton = kEndOk;

// A button of a group, and the value that it stands for.
struct Choice {
    int id;
    uint32_t value;
    std::string_view name;  // of the value in the store
    TextId text;
};
constexpr Choice kTypes[] = {
    {1084, 0, setting::kExportRomType, TextId::kCoolboy},
    {1085, 1, setting::kExportRomType, TextId::kCoolgirl},
};
constexpr Choice kSizes[] = {
    {1089, 0, setting::kExportPrgSize, TextId::kKilobytes128},
    {1090, 1, setting::kExportPrgSize, TextId::kKilobytes256},
    {1091, 2, setting::kExportPrgSize, TextId::kKilobytes512},
};

// The button of the stored value; the first one if there is no such value.
template <typename Buttons>
void CheckStored(const SettingsStore& store, std::span<const Choice> choices, Buttons& buttons) {
    uint32_t stored = 0;
    store.RegReadDword(kMainKey, choices.front().name, stored);
    buttons[stored < buttons.size() ? stored : 0].setChecked(true);
}

}  // namespace

CExportSettingsDialog::CExportSettingsDialog(SettingsStore& store, Language language,
                                             QWidget* parent)
    : CDialogBase(language, parent), store_(store) {
    AddControl(kTypeGroup, typeGroup_);
    AddControl(kSizeGroup, sizeGroup_);
    const auto fill = [&](QHBoxLayout& row, auto& buttons, std::span<const Choice> choices) {
        for (size_t i = 0; i < buttons.size(); ++i) {
            AddControl(choices[i].id, buttons[i]);
            row.addWidget(&buttons[i]);
        }
        row.addStretch();
    };
    fill(typeRow_, types_, kTypes);
    fill(sizeRow_, sizes_, kSizes);
    AddControl(kButton, button_);
    SetBackground(QColor(kWhiteGround));
    SetStartSize(199, 112);

    layout_.addWidget(&typeGroup_);
    layout_.addWidget(&sizeGroup_);
    layout_.addStretch();
    layout_.addWidget(&button_, 0, Qt::AlignRight);
    button_.setDefault(true);
}

const MessageTable& CExportSettingsDialog::Table() const {
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CExportSettingsDialog::OnInit),
        OnCommand(kTypes[0].id, &CExportSettingsDialog::OnRadio),
        OnCommand(kTypes[1].id, &CExportSettingsDialog::OnRadio),
        OnCommand(kSizes[0].id, &CExportSettingsDialog::OnRadio),
        OnCommand(kSizes[1].id, &CExportSettingsDialog::OnRadio),
        OnCommand(kSizes[2].id, &CExportSettingsDialog::OnRadio),
        OnCommand(kButton, &CExportSettingsDialog::OnButton),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CExportSettingsDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kExportSettings, UiLanguage()));
    SetTextId(kTypeGroup, TextId::kMulticartRomType);
    SetTextId(kSizeGroup, TextId::kMenuPrgSize);
    SetTextId(kButton, TextId::kConfirm);
    for (const Choice& choice : kTypes)
        SetTextId(choice.id, choice.text);
    for (const Choice& choice : kSizes)
        SetTextId(choice.id, choice.text);
}

MessageResult CExportSettingsDialog::OnInit(MessageParam, MessageParam) {
    CheckStored(store_, kTypes, types_);
    CheckStored(store_, kSizes, sizes_);
    return 1;
}

MessageResult CExportSettingsDialog::OnRadio(MessageParam wParam, MessageParam) {
    for (const std::span<const Choice> choices : {std::span<const Choice>(kTypes), {kSizes}}) {
        for (const Choice& choice : choices) {
            if (choice.id == wParam) store_.RegWriteDword(kMainKey, choice.name, choice.value);
        }
    }
    return 1;
}

MessageResult CExportSettingsDialog::OnButton(MessageParam, MessageParam) {
    Post(kMessageClose);
    return 1;
}

}  // namespace bw
