#pragma once

#include <string_view>

namespace halcyra::virtual_kinect {

// Whether `text`, a YAML stream, is at most one map, in lines or in braces, and nothing but
// comments stands behind it. Does not judge what is in the map. FileStorage steps three characters
// ahead after a document, whatever they are, and never returns from what may follow; what passes
// here, it has been seen to return from.
bool is_single_document(std::string_view text);

}  // namespace halcyra::virtual_kinect
