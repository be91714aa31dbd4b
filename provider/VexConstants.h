#pragma once

#include "I18NString.h"
#include "model/VexClassNames.h"

// Each source file that includes this has its own copies, made before any
// object of that file.
namespace {

[[maybe_unused]] I18NString const k_nSpace(VexClass::Namespace);
[[maybe_unused]] I18NString const k_object("object");
[[maybe_unused]] I18NString const k_anonymous("anonymous");
[[maybe_unused]] I18NString const k_all("all");
[[maybe_unused]] I18NString const k_name("name");
[[maybe_unused]] I18NString const k_property("property");

} // namespace
