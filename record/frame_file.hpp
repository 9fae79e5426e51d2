// Turns frames into the files of a recording.
#pragma once

#include "record/record_options.hpp"
#include "record/recorded_set.hpp"

namespace halcyra::record {

// Infrared and depth are kept bit for bit: as a 16-bit PNG file where all values are whole numbers
// from 0 to 65535, else as a 32-bit float TIFF file, which also holds fractions, negative zero, NaN
// and infinities. Colour becomes a JPEG or PNG file of three channels in the usual order, without
// the unused one; a grey frame stays at one channel. A frame that cannot be used becomes an empty
// file. Throws cv::Exception when the library cannot encode a picture.
void encode_frame(const RecordedFrame& frame, Stream stream, const RecordOptions& options,
                  FrameFile& file);

// Encodes the frames of the streams that are recorded. Never throws: what went wrong is told in
// `set.failure`, which is empty otherwise.
void encode_set(RecordedSet& set, const RecordOptions& options);

}  // namespace halcyra::record
