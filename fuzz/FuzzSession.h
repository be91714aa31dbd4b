#pragma once

#include "host/service/ActionCall.h"
#include "host/service/HostSession.h"
#include "host/service/PluginProxy.h"
#include "host/service/Service.h"

#include <memory>
#include <string>
#include <string_view>

namespace fuzz {

/// The plug-in of the whole program.
vex::PluginProxy& plugin();

/// Typed calls of that plug-in.
vex::Service& service();

/// The user "ann" before a small model with views, a shortcut and two languages.
vex::Visit const& usualVisit();

/// Somebody who is not restricted before that model; good until the next one.
vex::Visit visitAlone(std::shared_ptr<vex::Model const> model);

/// A metadata request through the service. Raises `KRLDocumentException` when the
/// request cannot be read.
vex::MetadataAnswer request(vex::Visit const& visit, std::string_view text);

/// A session of the user "ann" on the small model.
std::unique_ptr<vex::HostSession> openSession(vex::SessionPaths paths = vex::SessionPaths::Any);

/// Ends the session as a host does.
void close(vex::HostSession& session);

/// How much an answer may hold, so that no input takes long.
vex::ActionLimits smallLimits();

/// A metadata request on the path "/content/m". Raises `KRLDocumentException`
/// when the request cannot be read.
vex::ActionOutcome ask(vex::HostSession& session, std::string_view request);

/// Whether the user may see the query subject "q" on that path: the cheapest of
/// calls.
vex::ActionOutcome check(vex::HostSession& session);

/// @{
/// Requires that a call ended in one of the ways that calls may end.
void requireSound(vex::ActionOutcome const& outcome);
void requireSound(vex::MetadataAnswer const& answer);
/// @}

} // namespace fuzz
