#include "ui/shell/UndoablePreset.h"

#include "app/ListChange.h"
#include "ui/text/Words.h"

#include <QPointer>

#include <memory>

namespace tallyfold {

void applyUndoably(const Environment &environment, const Preset &preset)
{
    AppModel &model = environment.model;
    auto other = std::make_shared<StampSettings>(model.settings().stamp);
    model.applyPreset(preset);
    if (model.settings().stamp == *other || !model.undoManager()) {
        return;
    }
    auto swap = [model = QPointer<AppModel>(&model), other] {
        if (model) {
            const StampSettings current = model->settings().stamp;
            model->setStamp(*other);
            *other = current;
        }
    };
    model.undoManager()->push(std::make_unique<ListChange>(words(QT_TRANSLATE_NOOP("Words", "Apply Preset")),
                                                           std::move(swap))
                                  .release()); // The stack owns it.
}

} // namespace tallyfold
