// The text format of documents, which samples/README.md describes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "model.hpp"

namespace simulator {

// The document that `content` (UTF-8) describes. Raises std::runtime_error with `file_name`, line
// number and reason where it is malformed.
std::shared_ptr<Document> ReadDocument(std::string_view file_name, std::string_view content);

// `drawing` in the same format: reading it gives the same drawing.
std::string WriteDrawing(const Document& drawing);
// The same of what is displayed: tables as they were computed last.
std::string WriteDisplay(const Document& drawing);

} // namespace simulator
