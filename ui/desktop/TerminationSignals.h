#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace tallyfold {

/// Turns the system's request to end (SIGTERM, SIGINT, SIGHUP) into a signal of Qt's, so that a production
/// can stop after its page. One at a time per program.
class TerminationSignals final : public QObject {
    Q_OBJECT
public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tallyfold
