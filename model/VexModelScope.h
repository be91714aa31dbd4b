#pragma once

#include "VEX_HANDLE.h"

class I18NLocale;
class VexSession;

/// The open model as one request reads it.
struct VexModelScope {
    VexSession& session;
    I18NLocale const* locale; // names are read in
    VEX_HANDLE rootNamespace; // below it shortcuts and query subjects are searched for
};
