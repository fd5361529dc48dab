/// URIs of buffers and images.
#pragma once

#include <string>
#include <string_view>

namespace orv::rws::adaptor::headless {

bool IsDataUri(std::string_view uri);
/// The bytes of a data: URI, in base64 or percent-encoded. False when it is damaged.
bool DecodeDataUri(std::string_view uri, std::string& bytes);
std::string EncodeDataUri(std::string_view bytes);

/// The path of a relative URI, percent signs decoded. False for other schemes, absolute paths,
/// damaged percent signs and paths that no file can have.
bool DecodeRelativeUri(std::string_view uri, std::string& path);
/// A relative path as a URI.
std::string EncodeRelativeUri(std::string_view path);

/// Reads a whole file in one piece of memory; on failure `error` names it and the reason.
bool ReadWhole(const std::string& path, std::string& bytes, std::string& error);
/// The same for a file that another names; it must be a regular one, which ends.
bool ReadSideFile(const std::string& path, std::string& bytes, std::string& error);

}  // namespace orv::rws::adaptor::headless
