#pragma once

#include <string>

#include "ZekTool/Mark/SMarkOptions.h"
#include "ZekTool/Mark/SMarkResult.h"

namespace zektool
{

/// Sets in a model the flags of the variants that lie beside it, and the processed marker: the
/// bytes that `zek::CZEKOverwriter` sets. Many threads may mark at once, also the same model.
///
/// Without an output path only the bytes that differ are written, into the file as it stands, after
/// it has been seen that it is in the state that it was read in. One that changes meanwhile is read
/// again. A model that is as it has to be is not opened for writing. Whatever ends the program or
/// fails, every byte is the old one or the new one.
///
/// With an output path the model is left alone, and that file is written complete or not at all.
/// The variants are those beside the model. The output must not be the model itself.
///
/// The depfile is written before, so that the output is not older than a folder that both are in.
SMarkResult Mark(const std::string& path, const SMarkOptions& options);

} // namespace zektool
