#pragma once

#include "VEX_HANDLE.h"

class I18NString;
class KRLIDOM_Node;
class VexSession;
class VexTreeObserver;

/// What the extension `VexExplainTree` does.
void ExplainTree(VexSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                 KRLIDOM_Node* response, VexTreeObserver& observer);

/// What the extension `VexAnswerAt` does.
void AnswerAt(VexSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
              KRLIDOM_Node* response, VEX_HANDLE object, VexTreeObserver* observer);
