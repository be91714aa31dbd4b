#include "plugin/VexMAActionPlugin.h"

#include "KRLPluginCreator.h"
#include "VexAction.h"
#include "VexNotification.h"
#include "VexObjectCustomData.h"
#include "VexTrace.h"
#include "model/VexFailure.h"
#include "plugin/VexAccessAction.h"
#include "plugin/VexMAAction.h"
#include "provider/VexConstants.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>

// The six constants above come first, then the creator, then the namespace: the
// plug-in is registered while the library is being loaded, and no call can
// arrive before all of them exist.
namespace {

KRLPluginCreator<std::string, VexPluginInterface, VexMAActionPlugin>
    s_VexMAAction_Plugin_creator("VexMAActionPlugin", nullptr, nullptr);

I18NString const k_MAPlugin_namespace("VexMAActionPlugin");

char const* s_maAction = "MaAction";
char const* s_maAccessibility = "AccessAction";

// One row for each action: the object that serves it, kept under its key.
struct ActionRow {
    long code;
    char const* const& key;
    void* (*create)(VexSession& session);
    void (*run)(void* action, VexParams const& in, VexParams& out);
    void (*destroy)(void* action);
};

template <class Action, void (Action::*Run)(VexParams const&, VexParams&)>
constexpr ActionRow rowOf(long code, char const* const& key) {
    return {code, key, [](VexSession& session) -> void* { return new Action(session); },
            [](void* action, VexParams const& in, VexParams& out) {
                (static_cast<Action*>(action)->*Run)(in, out);
            },
            [](void* action) { delete static_cast<Action*>(action); }};
}

ActionRow const actionRows[] = {
    rowOf<VexMAAction, &VexMAAction::doRequest>(VexAction::MetadataRequest, s_maAction),
    rowOf<VexAccessAction, &VexAccessAction::doAccessibility>(VexAction::AccessibilityRequest,
                                                              s_maAccessibility),
};

ActionRow const* findRow(long code) {
    for (ActionRow const& row : actionRows) {
        if (row.code == code) {
            return &row;
        }
    }
    return nullptr;
}

// An action object's address as custom data keeps it: decimal text; none when
// the text is empty.
I18NString textOf(void* action) {
    return std::to_string(reinterpret_cast<std::intptr_t>(action)).c_str();
}

void* addressOf(I18NString const& text) {
    static_assert(sizeof(long) == sizeof(void*));
    return reinterpret_cast<void*>(std::strtol(text.c_str(), nullptr, 10));
}

void* sessionAction(ActionRow const& row, VexSession& session, VexObjectCustomData& customData) {
    I18NString const key(row.key);
    // quirk: one-kind-of-action-per-session
    // The test is on the namespace as a whole: a session has the object of the
    // action that it asked for first, and no other. Kept on purpose.
    if (customData.HasCustomData(k_MAPlugin_namespace)) {
        void* const action = addressOf(customData.GetCustomDataProperty(key, k_MAPlugin_namespace));
        if (action == nullptr) {
            RaiseFailure(VexFailure::ActionEntryMissing, {key});
        }
        return action;
    }
    std::unique_ptr<void, void (*)(void*)> action(row.create(session), row.destroy);
    customData.SetCustomDataProperty(key, textOf(action.get()), false, k_MAPlugin_namespace);
    return action.release(); // found again through the custom data from now on
}

} // namespace

int VexMAActionPlugin::Initialize([[maybe_unused]] char const* parameters) {
    return 1;
}

int VexMAActionPlugin::Terminate([[maybe_unused]] char const* parameters) {
    return 1;
}

VexErrorCode VexMAActionPlugin::DoAction(VexSession& session, VexVariant const& action,
                                         [[maybe_unused]] VexException& exception,
                                         VexParams const& in, VexParams& out) {
    OutputDebugString("********VexMAActionPlugin::DoAction \n");
    if (action.GetType() == VexVariant::Long) {
        VexObjectCustomData customData(session); // of an unknown action too
        ActionRow const* const row = findRow(static_cast<long>(action));
        if (row == nullptr) {
            return VexErrorCode(VexErrorCode::NotHandled, nullptr);
        }
        row->run(sessionAction(*row, session, customData), in, out);
    }
    return VexErrorCode(VexErrorCode::Handled, nullptr);
}

void VexMAActionPlugin::Notify(VexNotification const& notification) {
    int const kind = notification.GetKind();
    if (kind != VexNotification::SessionClosed && kind != VexNotification::ModelReloaded) {
        return;
    }
    VexObjectCustomData customData(notification.GetSession());
    // The addresses are read before anything is dropped: reading may fail, and
    // the entries must not name objects that are gone.
    std::array<void*, std::size(actionRows)> actions{};
    if (customData.HasCustomData(k_MAPlugin_namespace)) {
        std::transform(std::begin(actionRows), std::end(actionRows), actions.begin(),
                       [&customData](ActionRow const& row) {
                           return addressOf(
                               customData.GetCustomDataProperty(row.key, k_MAPlugin_namespace));
                       });
    }
    for (ActionRow const& row : actionRows) {
        customData.RemoveCustomDataProperty(row.key, k_MAPlugin_namespace);
    }
    for (std::size_t index = 0; index < actions.size(); ++index) {
        if (actions[index] != nullptr) {
            actionRows[index].destroy(actions[index]);
        }
    }
}
