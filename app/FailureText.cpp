#include "app/FailureText.h"

#include <QCoreApplication>

#include <cerrno>

namespace tallyfold {

namespace {

using During = FailureCause::During;
using Finding = FailureCause::Finding;

class Text {
    Q_DECLARE_TR_FUNCTIONS(FailureText)
public:
    /// For a source that cannot be read because of a system error.
    static QString ofReading(std::error_code error)
    {
        if (error == std::errc::no_such_file_or_directory) {
            return tr("The original is no longer there. Put it back, or remove it from the list.");
        }
        if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted) {
            return tr("Permission denied: the original may not be read. Ask its owner, or add a copy of it.");
        }
        return tr("The original couldn’t be read: %1. Check its disk or connection.").arg(systemWords(error));
    }

    /// For a copy that cannot be written; nothing if only the message of the system tells why.
    static std::optional<QString> ofWriting(std::error_code error)
    {
        if (error == std::errc::no_space_on_device) {
            return tr("No space left on the disk. Make room, or choose a folder on another disk.");
        }
        if (error.value() == EDQUOT) {
            return tr("Your share of the disk is used up. Make room, or choose a folder on another disk.");
        }
        if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted) {
            return tr("Permission denied in the output folder. Choose a folder that you may write in.");
        }
        if (error == std::errc::read_only_file_system) {
            return tr("The disk of the output folder is read-only. Choose a folder on another disk.");
        }
        if (error == std::errc::no_such_file_or_directory) {
            return tr("The output folder is no longer there. Put it back, or choose another one.");
        }
        if (error == std::errc::filename_too_long) {
            return tr("The name is too long for the disk. Choose a shorter prefix or another naming style.");
        }
        if (error == std::errc::file_exists) {
            return tr("A file of the same name turned up in the output folder, and was left as it is. Choose "
                      "an empty folder.");
        }
        if (error == std::errc::not_enough_memory) {
            return tr("There was not enough memory. Close other programs, or stamp fewer files at a time.");
        }
        return std::nullopt;
    }

    static QString ofFinding(During during, Finding finding)
    {
        switch (finding) {
        case Finding::damaged:
            break;
        case Finding::changed:
            return tr("The original changed while it was read. Stamp it again when nothing writes to it.");
        case Finding::limitReached:
            return tr("The original takes more memory or time than a file may take. Print it to a new PDF, "
                      "and stamp that.");
        }
        return during == During::checkingCopy
                   ? tr("What the disk gave back is not what was written. Check the disk or its connection.")
                   : tr("The original is damaged, or no PDF any more. Print it to a new PDF, and stamp "
                        "that.");
    }

    static QString ofCause(const FailureCause &cause)
    {
        if (const auto *finding = std::get_if<Finding>(&cause.reason)) {
            return ofFinding(cause.during, *finding);
        }
        const std::error_code error = cause.systemError();
        if (cause.during == During::openingSource || cause.during == During::readingSource) {
            return ofReading(error);
        }
        return ofWriting(error).value_or(
            tr("The copy couldn’t be written: %1. Check the disk or its connection.")
                .arg(systemWords(error)));
    }

    static QString ofLocked()
    {
        return tr("The original needs a password by now. Save it without one, and add that.");
    }

    static QString ofEncrypted()
    {
        return tr("The original’s owner allows no stamped copies by now. Ask for one without restrictions.");
    }

private:
    static QString systemWords(std::error_code error)
    {
        return QString::fromLocal8Bit(error.message().c_str());
    }
};

} // namespace

std::optional<QString> failureText(const StampError &error)
{
    if (error.is<StampError::Locked>()) {
        return Text::ofLocked();
    }
    if (error.is<StampError::Encrypted>()) {
        return Text::ofEncrypted();
    }
    return error.cause ? std::optional(Text::ofCause(*error.cause)) : std::nullopt;
}

std::optional<QString> writingFailureText(std::error_code error)
{
    return Text::ofWriting(error);
}

} // namespace tallyfold
