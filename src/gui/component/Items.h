// `item` children of a document.
#pragma once

#include <vector>

#include "gui/componentinterface/Item.h"
#include "util/xml/Element.h"

namespace orv::gui::component {

std::vector<componentinterface::Item> ReadItems(const util::xml::Element& tag);
/// As it is shown.
std::string ShownText(const componentinterface::Item& item);

}  // namespace orv::gui::component
