#include "raster/GdalErrors"

#include <cpl_error.h>

namespace tools {

namespace {

void collect(CPLErr kind, CPLErrorNum, const char* message)
{
    if (kind >= CE_Failure) {
        static_cast<GdalErrors*>(CPLGetErrorHandlerUserData())->note(message);
    }
}

}  // namespace

GdalErrors::GdalErrors()
{
    CPLPushErrorHandlerEx(collect, this);
}

GdalErrors::~GdalErrors()
{
    CPLPopErrorHandler();
}

void GdalErrors::note(const char* message)
{
    if (m_first.empty()) {
        m_first = message;
    }
}

}  // namespace tools
