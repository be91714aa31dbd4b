#include "VexPluginInterface.h"

VexPluginInterface::~VexPluginInterface() = default;

VexErrorCode VexPluginInterface::DoAction([[maybe_unused]] VexSession& session,
                                          [[maybe_unused]] VexVariant const& action,
                                          [[maybe_unused]] VexException& exception,
                                          [[maybe_unused]] VexParams const& in,
                                          [[maybe_unused]] VexParams& out,
                                          [[maybe_unused]] VexVariant* result) {
    return VexErrorCode(VexErrorCode::NotHandled, nullptr);
}
