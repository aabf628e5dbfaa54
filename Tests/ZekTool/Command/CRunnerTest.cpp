#include "ZekTool/Command/CRunner.h"

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <set>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "Support/CTemporaryFolder.h"

namespace
{

using testsupport::CTemporaryFolder;
using namespace zektool;

/// Does what a test says, and tells how many models were begun.
class CTestCommand : public CModelCommand
{
public:
    using Work = std::function<SResult(int)>;

    explicit CTestCommand(Work work) : CModelCommand(false), m_Work(std::move(work)) {}

    SResult Run(const SModelPath& model) override
    {
        ++begun;
        return m_Work(std::stoi(std::string(model.GetName())));
    }

    SResult MakeFailure(const SModelPath&, EOutcome outcome, const std::string& reason) override
    {
        if (failuresWithoutMemory > 0)
        {
            --failuresWithoutMemory;
            throw std::bad_alloc();
        }
        return {outcome, reason + "\n"};
    }

    std::string MakeSummary(const STally&) const override { return ""; }

    std::atomic<int> begun{0};
    int failuresWithoutMemory = 0; ///< how many results cannot be made at first

private:
    Work m_Work;
};

/// Models with the names 1000 to 1199, and a file for the output.
struct CRunnerTest : ::testing::Test
{
    static constexpr int ModelCount = 200;
    static constexpr int FirstName = 1000;

    CRunnerTest()
    {
        for (int i = 0; i < ModelCount; ++i)
            folder.Write("models/" + std::to_string(FirstName + i), "model");
        descriptor = open(folder.GetPath("output").c_str(), O_CREAT | O_RDWR, 0600);
    }
    ~CRunnerTest() override { close(descriptor); }

    STally Run(CModelCommand& command, std::size_t threadCount)
    {
        CModelList models({folder.GetPath("models")}, {"*"});
        COutput output(descriptor);
        CProgress progress;
        return CRunner(command, models, output, progress).Run(threadCount);
    }

    std::string GetOutput() const
    {
        const testsupport::Bytes bytes = folder.Read("output");
        return std::string(bytes.begin(), bytes.end());
    }

    static std::string MakeLine(int name) { return std::to_string(name) + "\n"; }

    static SResult LackMemoryForThird(int name)
    {
        if (name == FirstName + 2)
            throw std::bad_alloc();
        return SResult{EOutcome::Well, MakeLine(name)};
    }

    CTemporaryFolder folder;
    int descriptor;
};

TEST_F(CRunnerTest, ResultsComeInTheOrderOfTheListWhateverTheThreadsDo)
{
    std::string expected;
    for (int i = 0; i < ModelCount; ++i)
        expected += MakeLine(FirstName + i);
    CTestCommand command(
        [](int name)
        {
            std::this_thread::sleep_for(std::chrono::microseconds(name * 7919 % 2000));
            return SResult{EOutcome::Well, MakeLine(name)};
        });
    const STally tally = Run(command, 8);
    EXPECT_EQ(expected, GetOutput());
    EXPECT_EQ(static_cast<std::size_t>(ModelCount), tally.well);
}

TEST_F(CRunnerTest, SeveralThreadsWorkAtOnce)
{
    std::atomic<int> waiting{0};
    CTestCommand command(
        [&](int name)
        {
            ++waiting;
            // Four threads have to be here at once for any of them to go on.
            while (name < FirstName + 4 && waiting < 4)
                std::this_thread::yield();
            return SResult{EOutcome::Well, ""};
        });
    EXPECT_EQ(static_cast<std::size_t>(ModelCount), Run(command, 4).well);
}

TEST_F(CRunnerTest, OnlySoManyResultsWaitForAModelThatTakesLong)
{
    constexpr int most = 2 * 64;
    CTestCommand command(
        [&](int name)
        {
            while (name == FirstName && command.begun < most)
                std::this_thread::yield();
            if (name == FirstName)
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
            EXPECT_TRUE(name != FirstName || command.begun == most) << command.begun;
            return SResult{EOutcome::Well, ""};
        });
    Run(command, 2);
    EXPECT_EQ(ModelCount, command.begun);
}

TEST_F(CRunnerTest, OutcomesAreCounted)
{
    CTestCommand command(
        [](int name)
        {
            if (name == FirstName + 7)
                throw std::runtime_error("thrown");
            if (name == FirstName + 8)
                throw std::bad_alloc();
            return SResult{name % 2 == 0 ? EOutcome::Changed : EOutcome::Failed, ""};
        });
    const STally tally = Run(command, 3);
    EXPECT_EQ(99U, tally.changed);
    EXPECT_EQ(101U, tally.failed);
    EXPECT_EQ(101U, tally.failedPaths.size());
    EXPECT_EQ(folder.GetPath("models/1001"), tally.failedPaths[0]);
    EXPECT_EQ("thrown\nnot enough memory\n", GetOutput());
}

TEST_F(CRunnerTest, AResultThatThereIsNoMemoryForEndsTheWorkAndWhatIsDoneIsPrinted)
{
    CTestCommand command(LackMemoryForThird);
    command.failuresWithoutMemory = 1;
    EXPECT_THROW(Run(command, 1), std::bad_alloc);
    EXPECT_EQ(3, command.begun);
    std::string expected = "1000\n1001\nnot enough memory\n";
    for (int i = 3; i < ModelCount; ++i)
        expected += "not done\n";
    EXPECT_EQ(expected, GetOutput());
}

TEST_F(CRunnerTest, WhatIsDoneIsPrintedWhenThereIsNoMemoryForTheRest)
{
    CTestCommand command(LackMemoryForThird);
    command.failuresWithoutMemory = 2;
    EXPECT_THROW(Run(command, 1), std::bad_alloc);
    EXPECT_EQ("1000\n1001\n", GetOutput());
}

TEST_F(CRunnerTest, NoModelIsBegunWhenTheOutputHasFailed)
{
    close(descriptor);
    descriptor = open("/dev/full", O_WRONLY);
    CTestCommand command(
        [](int) {
            return SResult{EOutcome::Well, std::string(COutput::BufferSize, 'x')};
        });
    // A second thread might go on while the first has not written yet.
    const STally tally = Run(command, 1);
    EXPECT_EQ(1, command.begun);
    EXPECT_EQ(1U, tally.well);
    EXPECT_EQ(static_cast<std::size_t>(ModelCount - 1), tally.notDone);
}

} // namespace
