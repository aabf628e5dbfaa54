#pragma once

#include <string>
#include <vector>

#include "Support/CTemporaryFolder.h"

/// A model made to cost as much memory as it can.
struct SHostileModel
{
    std::string what; ///< such as "lightmaps without names"
    testsupport::Bytes image;
    bool isAccepted;
};

/// Returns models of about a size in bytes: each kind of record at its smallest and again with a
/// name that just needs a block of its own, as many as go in; names that fill the file; and each
/// count as high as an int can be, over bytes that hold no such number of records.
std::vector<SHostileModel> MakeHostileModels(std::size_t size);
