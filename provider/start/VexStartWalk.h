#pragma once

#include "provider/start/VexFoundStart.h"
#include "provider/start/VexStartContext.h"
#include "provider/start/VexStartPath.h"

#include <optional>

class VexMDMaProviderHelper;

/// The namespaces of the open model in its order; the first is the root
/// namespace. Raises when there is none.
Vex_Handle_Collection FindNamespaces(VexSession const& session);

/// The start path of the root namespace, and in `parts` its names. Raises when
/// it does not split.
I18NString PathOfRootNamespace(VexModelScope const& model, VexNameParts& parts);

/// A start path, or a reference, as it was asked for. Not empty.
struct VexAskedStart {
    VexNameParts const& parts;
    I18NString const& text;
    bool isReference;
};

/// Finds the object that is asked for; the first of its names is one of the
/// namespaces'. None when a reference leads to nothing that is to be told of;
/// raises when a name is not found.
std::optional<VexFoundStart> FindStart(VexStartContext const& context,
                                       VexMDMaProviderHelper const& helper,
                                       Vex_Handle_Collection const& namespaces,
                                       VexAskedStart const& asked);
