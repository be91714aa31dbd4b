#include "VexSession.h"

VexObjectStore::~VexObjectStore() = default;
VexSecurityInfoSource::~VexSecurityInfoSource() = default;
VexModelService::~VexModelService() = default;
VexSession::~VexSession() = default;
