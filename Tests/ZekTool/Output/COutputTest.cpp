#include "ZekTool/Output/COutput.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "ZekTool/Output/Descriptor.h"

namespace
{

using zektool::COutput;

/// A pipe whose ends are closed with it.
struct SPipe
{
    explicit SPipe(int flags = 0) { EXPECT_EQ(0, pipe2(ends.data(), flags)); }
    ~SPipe()
    {
        close(ends[0]);
        close(ends[1]);
    }

    std::array<int, 2> ends = {};
};

std::string ReadUntil(int descriptor, std::size_t size)
{
    std::string all;
    std::array<char, 4096> bytes;
    while (all.size() < size)
    {
        const ssize_t count = read(descriptor, bytes.data(), bytes.size());
        if (count <= 0)
            break;
        all.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return all;
}

TEST(StandardStreams, ThatAreClosedStaySoAndGiveTheirNumbersToNoFile)
{
    EXPECT_EXIT(
        {
            for (int descriptor : {0, 1, 2})
                close(descriptor);
            zektool::PrepareStandardStreams();
            const int file = open("/dev/zero", O_RDWR);
            char byte = 0;
            const bool isSafe = file > 2 && read(0, &byte, 1) < 0 && write(1, &byte, 1) < 0 &&
                                write(2, &byte, 1) < 0;
            _exit(isSafe ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(COutput, WhatIsWrittenComesWithAFlush)
{
    SPipe pipe;
    COutput output(pipe.ends[1]);
    EXPECT_TRUE(output.IsEmpty());
    output.Write("one ");
    output.Write("two");
    EXPECT_FALSE(output.IsEmpty());
    output.Flush();
    EXPECT_TRUE(output.IsEmpty());
    EXPECT_EQ("one two", ReadUntil(pipe.ends[0], 7));
    EXPECT_EQ(0, output.GetError());
}

TEST(COutput, GoesToAFunctionUntilThatFails)
{
    std::string written;
    int error = 0;
    COutput output(
        [&](std::string_view text)
        {
            written += text;
            return error;
        });
    output.Flush();
    output.Write("one");
    output.Flush();
    EXPECT_EQ("one", written);
    error = EIO;
    output.Write("two");
    output.Flush();
    EXPECT_EQ(EIO, output.GetError());
    output.Write("three");
    output.Flush();
    EXPECT_EQ("onetwo", written);
}

TEST(COutput, AFullBufferIsFlushed)
{
    SPipe pipe;
    COutput output(pipe.ends[1]);
    const std::string most(COutput::BufferSize - 1, 'a');
    output.Write(most);
    EXPECT_FALSE(output.IsEmpty());
    EXPECT_TRUE(output.IsFullWith(1));
    EXPECT_FALSE(output.IsFullWith(0));
    std::thread reader([&] { EXPECT_EQ(most + "b", ReadUntil(pipe.ends[0], most.size() + 1)); });
    output.Write("b");
    EXPECT_TRUE(output.IsEmpty());
    reader.join();
}

TEST(COutput, ADescriptorThatDoesNotBlockIsWaitedFor)
{
    SPipe pipe(O_NONBLOCK);
    fcntl(pipe.ends[0], F_SETFL, 0);
    COutput output(pipe.ends[1]);
    const std::string much(1000000, 'a');
    std::thread reader([&] { EXPECT_EQ(much, ReadUntil(pipe.ends[0], much.size())); });
    output.Write(much);
    output.Flush();
    EXPECT_EQ(0, output.GetError());
    close(pipe.ends[1]);
    reader.join();
    pipe.ends[1] = -1;
}

TEST(COutput, TheFirstErrorStays)
{
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    SPipe pipe;
    close(pipe.ends[0]);
    pipe.ends[0] = -1;
    COutput output(pipe.ends[1]);
    output.Write("lost");
    output.Flush();
    EXPECT_EQ(EPIPE, output.GetError());
    output.Write("lost");
    output.Flush();
    EXPECT_EQ(EPIPE, output.GetError());
    std::signal(SIGPIPE, old);
}

} // namespace
