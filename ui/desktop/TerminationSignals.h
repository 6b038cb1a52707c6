#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace tallyfold {

/// Converts SIGTERM, SIGINT and SIGHUP to a Qt signal, so that a production can stop after its page. At most
/// one instance at a time.
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
