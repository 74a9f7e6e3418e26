// "Open a cart" in the main window: its command, its window, and what is done with the cart.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "shell/dialogs/cart_dialog.h"
#include "shell/list/game_list_view.h"
#include "shell/main/play_commands.h"
#include "shell/tasks/list_host.h"

namespace bw {

class CartPart {
  public:
    // All must live longer.
    CartPart(ListHost& host, PlayCommands& play, const GameListView& view, CDialogBase& window)
        : host_(host), play_(play), view_(view), window_(window) {}

    // Asks for the file. What is no cart is told. Runs beside anything else.
    void Open();
    void Open(const std::filesystem::path& file);
    // For an end that no window can prevent.
    void StoreAll() const;

  private:
    void Show(const std::filesystem::path& file, CartContents cart);
    void TakeOut();
    void Compare(uint32_t sectorBytes);
    // The images, in the cart's order, become the list if the user wants it.
    void OfferList(const std::vector<std::filesystem::path>& images,
                   std::vector<std::u16string> names);
    // Runs `work` on a thread of its own, then `finish` with what it gave, on the window's. The
    // dialog shows meanwhile that it is busy.
    template <typename Work, typename Finish>
    void Start(Work work, Finish finish);
    bool IsShown() const { return dialog_ != nullptr && dialog_->IsOpen(); }
    // How far a task is, into the dialog and the status line; false once it is to stop.
    auto ProgressOf(TaskControl& control, std::u16string what);
    void Say(const std::u16string& lines);
    void SayProblem(const FileProblem& problem);

    ListHost& host_;
    PlayCommands& play_;
    const GameListView& view_;
    CDialogBase& window_;
    std::unique_ptr<CCartDialog> dialog_;
};

}  // namespace bw
