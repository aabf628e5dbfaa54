#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/RunProgram.h"

/// The path of the built program.
inline const std::string ProgramPath = ZEKTEXCOMP_PROGRAM;

/// A model with every kind of variant to look for. Its image fits the buffer of a file stream, so
/// that it is written when that is closed.
inline std::vector<unsigned char> MakeSmallModel()
{
    return testsupport::CModelBuilder::Build(testsupport::MakeFullModel(26)).GetImage();
}

/// Runs the program on a model.
inline testsupport::SProgramResult
RunTool(const std::string& model, const std::string& folder = ".")
{
    return testsupport::RunProgram({ProgramPath, model}, folder);
}

/// Runs a line of shell in which $0 stands for the program and $1 for the model.
inline testsupport::SProgramResult
RunShell(const std::string& line, const std::string& model, const std::string& folder = ".")
{
    return testsupport::RunProgram({"sh", "-c", line, ProgramPath, model}, folder);
}

inline bool IsEndingWith(const std::string& text, const std::string& end)
{
    return text.length() >= end.length() &&
           text.compare(text.length() - end.length(), end.length(), end) == 0;
}

/// Tells whether a run failed as the program fails: by its status and its last line.
inline testing::AssertionResult
IsError(const testsupport::SProgramResult& result, const std::string& model)
{
    if (result.exitStatus == 255 && IsEndingWith(result.output, "Error " + model + "\n"))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "status " << result.exitStatus << ", signal " << result.signal << ", output \""
           << result.output << "\", errors \"" << result.errors << "\"";
}

inline testing::AssertionResult IsSuccess(const testsupport::SProgramResult& result)
{
    if (result.exitStatus == 0 && IsEndingWith(result.output, "Succeeded\n"))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "status " << result.exitStatus << ", signal " << result.signal << ", output \""
           << result.output << "\", errors \"" << result.errors << "\"";
}
