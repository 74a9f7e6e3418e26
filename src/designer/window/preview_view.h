// The console's picture on the page of the preview, and the keys that go to it.
#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>
#include <optional>

#include "console/emulator.h"
#include "shell/dialogs/play_keys.h"

namespace bw {

// As large as fits by a whole number of the screen's pixels for one of the console, with a frame
// while it has the focus.
class PreviewView : public QWidget {
    Q_OBJECT
  public:
    // `keys` must live longer.
    explicit PreviewView(const PlayKeys& keys);

    void Show(const ConsolePicture& picture);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  signals:
    // The buttons that are held now.
    void Held(uint8_t buttons);
    void FocusChanged();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QSize PictureSize(int width) const;
    std::optional<PadPlace> PlaceFor(const QKeyEvent& key) const;
    void TellHeld();

    const PlayKeys& keys_;
    QImage picture_;
    QPointer<QWidget> before_;  // what had the focus
    HeldKeys held_;
};

}  // namespace bw
