// A page of the panel beside the designer's frame.
#pragma once

#include <QWidget>

#include "designer/model/views.h"
#include "language/language.h"

namespace bw {

class PanelPage : public QWidget {
    Q_OBJECT
  public:
    ~PanelPage() override;

    virtual TextId Title() const = 0;
    // Sets all texts anew.
    virtual void SetLanguage(Language language) = 0;
    // Something has changed that these views show: the document, what is current or selected, the
    // undo history. At most once for each event, and not in the middle of one.
    virtual void Changed(Views stale) = 0;
};

}  // namespace bw
