// How the core has a template tool made of its file.
#pragma once

#include <string>

namespace orv::rws {

class CCameraPlugin;

/// Makes the factory of the kind that a template's document defines. Null when the document is
/// damaged; then `element` tells where and `reason` why. The caller ends the factory by its
/// Destroy.
using TemplateMaker = CCameraPlugin* (*)(const std::string& document, std::string& element,
                                         std::string& reason);

}  // namespace orv::rws
