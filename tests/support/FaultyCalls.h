#pragma once

#include "files/FileCalls.h"

#include <functional>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// One file call: its kind ("open", "read", "readAt", "write", "copy", "syncData", "sync", "close", "rename",
/// "link", "unlink"), the name it is about (the last one where there are two, none where there is only a
/// descriptor) and its place among all calls, from 0.
struct FileCall {
    std::string kind;
    std::string name;
    int place = 0;
};

/// File calls that fail where a rule says so, and are noted down. Nothing is really brought to the disk,
/// which no test could see and many would wait for.
class FaultyCalls final : public files::FileCalls {
public:
    /// The error number a call fails with; 0 to let it through. A failing close closes all the same.
    std::function<int(const FileCall &)> rule = [](const FileCall &) { return 0; };

    /// The calls so far.
    [[nodiscard]] const std::vector<FileCall> &calls() const;

    int openAt(int folder, const char *name, int flags, mode_t mode) override;
    ssize_t read(int descriptor, char *bytes, std::size_t count) override;
    ssize_t readAt(int descriptor, char *bytes, std::size_t count, off_t offset) override;
    ssize_t write(int descriptor, const char *bytes, std::size_t count) override;
    ssize_t copyRange(int from, off_t offset, int to, std::size_t count) override;
    int syncData(int descriptor) override;
    int sync(int descriptor) override;
    int close(int descriptor) override;
    int renameWithoutReplacing(int folder, const char *from, const char *to) override;
    int link(int folder, const char *from, const char *to) override;
    int unlink(int folder, const char *name) override;

private:
    bool fails(const char *kind, const char *name = "");

    std::vector<FileCall> m_calls;
};

} // namespace tallyfold::tests
