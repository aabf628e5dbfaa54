#pragma once

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Support/CTemporaryFolder.h"

/// A model made to cost as much memory as it can.
struct SHostileModel
{
    std::string what; ///< such as "lightmaps without names, 32769"
    testsupport::Bytes image;
    bool isAccepted;
};

/// Returns models of at most about a size in bytes: each kind of record at its smallest and again
/// with a name that just needs a block of its own, as many as go in, and one more than a power of
/// two; names of such lengths; and each count as high as an int can be, over bytes that
/// hold no such number of records.
std::vector<SHostileModel> MakeHostileModels(std::size_t size);

/// How the names of files begin, of models that are accepted and of those that are refused.
constexpr std::string_view AcceptedStart = "accepted: ";
constexpr std::string_view RefusedStart = "refused: ";

/// Writes each of these models to a file of a folder, which is named for what it is. A process of
/// its own does it: the memory of this one counts as that of the programs that it starts, each of
/// which begins as a copy of it. Returns the files' paths.
std::set<std::filesystem::path>
WriteHostileModels(const testsupport::CTemporaryFolder& folder, std::size_t size);
