#pragma once

#include <functional>
#include <string>

#include "Support/CTemporaryFolder.h"

/// A model with one field that was tampered with.
struct SNastyModel
{
    std::string what; ///< such as "version 14, mesh count at 412 = 2147483647"
    testsupport::Bytes image;
};

/// What every flag of the models is before a run: no value that the program writes.
constexpr unsigned char FlagBefore = 9;

/// Calls a function with a model of every record kind of its version, once for each field and each
/// value that is likely to break a reader: ends and wrap-arounds of the integers, counts just
/// below and above what the bytes left can hold, odd switches, floats that are no numbers, texts
/// that end at once or not where they should.
void ForEachNastyModel(int version, const std::function<void(const SNastyModel&)>& use);
