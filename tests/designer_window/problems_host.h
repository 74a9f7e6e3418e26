// A window for the page of problems alone: a session, and what it is asked to show.
#pragma once

#include <stdexcept>
#include <vector>

#include "builder/design_check/finding_place.h"
#include "builder/resources.h"
#include "designer/tools/text_tools.h"
#include "designer/window/problems_page.h"

namespace bw {

class ProblemsHost : public DesignHost {
  public:
    ProblemsHost() {
        session_.RunWithoutStep([](WorkingCopy& copy) {
            LoadDesignData(copy.Store(), *MakeMemoryStore(), DefaultTileSet());
            SetItems(copy, std::vector<std::u16string>(12, u"A GAME"), 10, false);
            copy.Store().CaptionText = u"12 IN 1";
            ResetSmallCursor(copy.document);
            return Views();
        });
    }

    std::vector<ViewPart> revealed;

    const EditSession& Session() const override { return session_; }
    void Run(Command command) override { session_.Run(command); }
    void RunWithoutStep(Command command) override { session_.RunWithoutStep(command); }
    void WhenIdle(std::function<void()> work) override { work(); }
    void Reveal(Control view, const Rect& part) override { revealed.push_back({view, part}); }
    Language CurrentLanguage() const override { return Language::kEnglish; }

    void GoToStep(size_t) override { NotAsked(); }
    void Tell(std::u16string_view) override { NotAsked(); }
    const GestureMachine& Gestures() const override { NotAsked(); }
    UserDialogs& Dialogs() override { NotAsked(); }
    SettingsStore& Store() override { NotAsked(); }
    BackgroundTasks& Tasks() override { NotAsked(); }
    QWidget& Window() override { NotAsked(); }

  private:
    [[noreturn]] static void NotAsked() { throw std::logic_error("nothing that the page needs"); }

    EditSession session_;
};

}  // namespace bw
