#include "pdf/source/FailureLog.h"

#include "pdf/log/Log.h"

#include <new>
#include <qpdf/QPDFExc.hh>
#include <system_error>

namespace tallyfold::pdf {

void logFailure(const char *during, const std::exception &failure)
{
    if (const auto *parsing = dynamic_cast<const QPDFExc *>(&failure)) {
        qCInfo(pdfLog) << during << "failed: qpdf error" << parsing->getErrorCode() << "at offset"
                       << parsing->getFilePosition();
    } else if (const auto *system = dynamic_cast<const std::system_error *>(&failure)) {
        qCInfo(pdfLog) << during << "failed:" << system->code().message().c_str();
    } else if (dynamic_cast<const std::bad_alloc *>(&failure) != nullptr) {
        qCInfo(pdfLog) << during << "failed: out of memory";
    } else {
        qCInfo(pdfLog) << during << "failed: malformed";
    }
}

void logDamagedStream(const QPDFObjectHandle &stream)
{
    qCInfo(pdfLog) << "the data of object" << stream.getObjGen().getObj() << "is damaged";
}

} // namespace tallyfold::pdf
