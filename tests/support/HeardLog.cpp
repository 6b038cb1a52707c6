#include "tests/support/HeardLog.h"

#include <QLoggingCategory>

#include <mutex>

namespace tallyfold::tests {

namespace {

std::mutex lock;
QStringList messages;

void hear(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    const std::scoped_lock guard(lock);
    messages.append(QLatin1String(context.category) + QStringLiteral(": ") + message);
}

} // namespace

QStringList heard(const QString &rules, const std::function<void()> &work)
{
    messages.clear();
    QLoggingCategory::setFilterRules(rules);
    const QtMessageHandler before = qInstallMessageHandler(hear);
    work();
    qInstallMessageHandler(before);
    QLoggingCategory::setFilterRules({});
    return messages;
}

} // namespace tallyfold::tests
