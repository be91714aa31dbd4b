#pragma once

#include "VexPluginInterface.h"

/// The plug-in: finds the session's action object for an action's number and
/// hands the action over. Holds no state of its own; the action objects are
/// found again through the session's custom data.
class VexMAActionPlugin final : public VexPluginInterface {
public:
    int Initialize(char const* parameters) override;
    int Terminate(char const* parameters) override;

    /// Gives 1 when the action was done, 6 for a number of another plug-in's.
    /// An action that is not a long gives 1 and does nothing.
    VexErrorCode DoAction(VexSession& session, VexVariant const& action, VexException& exception,
                          VexParams const& in, VexParams& out) override;
    using VexPluginInterface::DoAction;

    /// Kinds 1 and 2 drop the session's action objects.
    void Notify(VexNotification const& notification) override;
};
