#include "core/FailureCause.h"

namespace tallyfold {

namespace {

const char *nameOf(FailureCause::During during)
{
    using enum FailureCause::During;
    switch (during) {
    case openingSource:
        return "opening the source";
    case readingSource:
        return "reading the source";
    case creatingCopy:
        return "creating the copy";
    case writingCopy:
        return "writing the copy";
    case checkingCopy:
        return "reading the copy back";
    case namingCopy:
        break;
    }
    return "naming the copy";
}

const char *nameOf(FailureCause::Finding finding)
{
    using enum FailureCause::Finding;
    switch (finding) {
    case damaged:
        return "damaged";
    case changed:
        return "changed meanwhile";
    case limitReached:
        break;
    }
    return "takes more memory or time than it may";
}

} // namespace

QDebug operator<<(QDebug debug, const FailureCause &cause)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << nameOf(cause.during) << ": ";
    if (const auto *finding = std::get_if<FailureCause::Finding>(&cause.reason)) {
        debug << nameOf(*finding);
    } else {
        debug << cause.systemError().message().c_str();
    }
    return debug;
}

} // namespace tallyfold
