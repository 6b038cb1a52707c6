#pragma once

#include "app/AppModel.h"

#include <QObject>

#include <functional>

namespace tallyfold {

/// Answers the desktop when it asks whether the session may end. While a production is written, the user
/// decides between the two. Where they may not be asked it ends, and the run with it: after its page, once
/// the program is told to end.
class SessionEnd final : public QObject {
    Q_OBJECT
public:
    /// Asks the user whether to stop writing, and waits for the answer.
    using Ask = std::function<bool()>;

    /// Of the session that the program runs in; `model` must outlive this.
    SessionEnd(AppModel &model, Ask ask);

    /// Whether the session may end now; `mayAsk` tells whether the user can be asked.
    [[nodiscard]] bool mayEnd(bool mayAsk) const;

private:
    AppModel *m_model;
    Ask m_ask;
};

} // namespace tallyfold
