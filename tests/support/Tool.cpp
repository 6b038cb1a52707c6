#include "tests/support/Tool.h"

#include <QProcess>
#include <QStringList>

namespace tallyfold::tests {

ToolResult runTool(const std::vector<std::string> &arguments)
{
    // File names are bytes and a QProcess takes text, so a shell is given the command on its standard input.
    QProcess process;
    std::string script = "exec";
    for (const std::string &argument : arguments) {
        script.append(" '");
        for (const char ch : argument) {
            script.append(ch == '\'' ? std::string("'\\''") : std::string(1, ch));
        }
        script.push_back('\'');
    }
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-s")});
    process.write(script.data(), static_cast<qint64>(script.size()));
    process.closeWriteChannel();
    constexpr int longestRun = 60'000;
    ToolResult result;
    if (!process.waitForFinished(longestRun)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.output = process.readAllStandardOutput().toStdString();
    result.errors = process.readAllStandardError().toStdString();
    return result;
}

} // namespace tallyfold::tests
