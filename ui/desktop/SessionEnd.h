#pragma once

#include "app/AppModel.h"

#include <QObject>

#include <functional>

namespace tallyfold {

/// Answers the session manager when it asks whether the session may end. During a production the user
/// decides. If interaction is not allowed, the session ends, and the run stops after its page once the
/// program is told to quit.
class SessionEnd final : public QObject {
    Q_OBJECT
public:
    /// Asks the user whether to stop writing, and waits for the answer.
    using Ask = std::function<bool()>;

    /// Connects to the session manager; `model` must outlive this.
    SessionEnd(AppModel &model, Ask ask);

    /// Whether the session may end now; `mayAsk` is whether interaction is allowed.
    [[nodiscard]] bool mayEnd(bool mayAsk) const;

private:
    AppModel *m_model;
    Ask m_ask;
};

} // namespace tallyfold
