#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <filesystem>
#include <functional>
#include <vector>

namespace tallyfold {

/// Makes the program one per session, over D-Bus (`org.freedesktop.Application` of the desktop entry
/// specification): a second start hands its files to the first and ends. Without a session bus every start
/// runs by itself.
class InstanceService final : public QObject {
    Q_OBJECT
public:
    /// On the session's bus, under the name `id`.
    explicit InstanceService(const QString &id);
    /// On `bus`, under the name `id`.
    explicit InstanceService(const QDBusConnection &bus, const QString &id, QObject *parent = nullptr);

    /// Who this start turned out to be.
    enum class Role {
        first, ///< Others will be told to come here.
        other, ///< One is running already; `handOver` reaches it.
        alone, ///< There is no bus, or the name on it was given back.
    };
    [[nodiscard]] Role role() const;

    /// Gives `files` to the program that runs already and brings it to the front. False when it does not
    /// answer. Where it has gone meanwhile, its place is taken: `role` then says so.
    bool handOver(const std::vector<std::filesystem::path> &files);

    /// Gives the name back, so that the next start is the first. For a program that ends: whoever it still
    /// told to come here would not be heard.
    void giveBack();

Q_SIGNALS:
    /// Another start asks to be shown; `token` lets a window come to the front (XDG activation).
    void activated(const QString &token);
    /// The same with files.
    void opened(const std::vector<std::filesystem::path> &files, const QString &token);

private:
    [[nodiscard]] Role takePlace();

    QDBusConnection m_bus;
    QString m_id;
    Role m_role = Role::alone;
};

/// The interface on the bus.
class InstanceAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit InstanceAdaptor(InstanceService *service);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &action, const QVariantList &parameter,
                        const QVariantMap &platformData);

private:
    /// Once the call is answered: reading many files takes longer than a caller waits.
    void tellLater(const std::function<void()> &tell);

    InstanceService *m_service;
};

} // namespace tallyfold
