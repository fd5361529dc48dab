// A rig's record as attributes of a storage node, and back.
#pragma once

#include <string>

#include "adaptor/common/RigRecord.h"
#include "adaptor/maya/scene/StorageValues.h"
#include "util/xml/Tag.h"

namespace orv::rws::adaptor::maya {

/// The record that these attributes tell, the same to the byte that StoreRecord took apart. Where
/// decoded data is shorter than its size attribute it counts as far as it goes. Of no name, with
/// `problem` filled, when they can't be read.
util::xml::Tag BuildPluginXML(const StorageValues& values, std::string& problem);

/// Takes a record apart. One that could not be read on opening is written as it was.
StorageValues StoreRecord(const RigRecord& record);
RigRecord ReadRecord(const StorageValues& values);

/// Gives the rig of a record another name, in the record and in the handles of its nodes, so that
/// it can stand beside one that has its own. Nothing happens to a damaged one.
void RenameRecord(RigRecord& record, const std::string& name);
/// A tag of a node of the rig `from` as one of the rig `to`; others stay.
std::string RenameTag(const std::string& tag, const std::string& from, const std::string& to);

}  // namespace orv::rws::adaptor::maya
