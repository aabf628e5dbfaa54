#include "ZekTool/Mark/CMarker.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>
#include <utility>
#include <vector>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Specific/FileSystem/SystemFiles.h"
#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"
#include "ZekTool/Mark/CDepfile.h"
#include "ZekTool/Mark/CMarkSink.h"
#include "ZekTool/Models/CVariantSearch.h"
#include "ZekTool/Models/OpenModel.h"
#include "ZekTool/Models/RefusalText.h"
#include "ZekTool/Output/CReplacementFile.h"

namespace zektool
{

namespace
{

using filesystem::CRandomAccessFile;
using Clock = std::chrono::system_clock;

constexpr unsigned char MarkerValue = 1;

/// Collects bytes in file order and writes those that are adjacent at once.
class CByteWriter
{
public:
    /// Borrows the file.
    explicit CByteWriter(CRandomAccessFile& file) : m_File(file) {}

    /// Takes a byte. False when those before it cannot be written.
    bool Put(std::int64_t offset, unsigned char byte)
    {
        if (offset != m_Next && !Flush())
            return false;
        m_Run.push_back(byte);
        m_Next = offset + 1;
        return true;
    }

    /// Writes what has been collected.
    bool Flush()
    {
        const auto size = static_cast<std::int64_t>(m_Run.size());
        const bool isWritten = m_Run.empty() || m_File.Write(m_Next - size, m_Run.data(), size);
        m_Run.clear();
        return isWritten;
    }

private:
    CRandomAccessFile& m_File;
    std::vector<unsigned char> m_Run;
    std::int64_t m_Next = 0; // one past the run's last byte
};

/// One attempt to mark a model.
class CMarker
{
public:
    /// A patient one leaves a file alone that another program has open.
    CMarker(const std::string& path, const SMarkOptions& options, bool isPatient)
        : m_Path(path)
        , m_Options(options)
        , m_IsPatient(isPatient)
        , m_Folder(GetModelFolder(path))
        , m_Sink(m_Result)
    {
    }

    /// Returns false when another program came in between, so that another attempt has to be made.
    /// The result is that of failing for good.
    bool Mark();

    SMarkResult& GetResult() { return m_Result; }

    /// How long to wait before the next attempt.
    std::chrono::nanoseconds GetTimeToSettle() const { return m_TimeToSettle; }

private:
    bool Walk();
    void FindVariants();
    void FindVariants(SMarkItem& item, CVariantSearch& search);
    bool Write();
    bool WriteInPlace();
    bool WriteOutput();
    bool CopyTo(CRandomAccessFile& output, bool& isReadWhole);
    bool WriteChanges(CRandomAccessFile& file) const;
    bool WriteDepfile();
    bool IsDepfileApart();
    const std::string& GetTarget() const
    {
        return m_Options.outputPath.empty() ? m_Path : m_Options.outputPath;
    }
    bool IsSettled() const { return m_TimeToSettle.count() <= 0; }

    // How an attempt ends that need not be made again: both are true.
    bool Succeed();
    bool Fail(const std::string& reason);

    const std::string& m_Path;
    const SMarkOptions& m_Options;
    bool m_IsPatient;
    std::string m_Folder;
    CRandomAccessFile m_File;
    std::chrono::nanoseconds m_TimeToSettle = {};
    SMarkResult m_Result;
    CMarkSink m_Sink;
    bool m_IsDifferent = false; // from what has to be in the file
};

bool CMarker::Mark()
{
    Fail("keeps being changed by another program"); // what stays when this attempt returns false
    if (!m_File.Open(m_Path))
        return Fail("cannot be opened: " + m_File.GetError()) && !m_File.IsBusy();
    m_TimeToSettle = m_File.GetState().GetTimeToSettle(Clock::now());

    if (!Walk())
        return Fail(MakeRefusalText(m_Sink.GetRefusal(), m_File)) && m_File.IsUnchanged();

    FindVariants();
    if (!m_Options.depfilePath.empty() && !IsDepfileApart())
        return true;
    if (m_Options.isDryRun)
        return Succeed();
    if (!m_Options.depfilePath.empty() && !WriteDepfile())
        return true;
    return Write();
}

/// What is held of the file is gone at the end, and the items of one that is refused.
bool CMarker::Walk()
{
    zek::CZEKFileSource source(m_File);
    zek::CZEKWalk<zek::CZEKFileSource, CMarkSink> walk(source, m_Sink);
    if (zek::WalkFile(walk))
        return true;
    m_Result.items.clear();
    return false;
}

void CMarker::FindVariants()
{
    const zek::SZEKHeader& header = m_Sink.GetHeader();
    m_Result.version = header.version;
    m_Result.markerFrom = static_cast<unsigned char>(header.processedMarkerValue);
    m_Result.isMarkerSet = header.processedMarker.offset >= 0 && m_Result.markerFrom != MarkerValue;
    m_IsDifferent = m_Result.isMarkerSet;

    CVariantSearch search(m_Folder, m_Options.isCubemapFolders);
    for (SMarkItem& item : m_Result.items)
    {
        FindVariants(item, search);
        m_IsDifferent = m_IsDifferent || item.IsDifferent();
    }
}

void CMarker::FindVariants(SMarkItem& item, CVariantSearch& search)
{
    const zek::FamilyFlags isPresent = search.Find(item.kind, item.index, item.name);
    SVariantCount& count = m_Result.counts[static_cast<std::size_t>(item.kind)];
    ++count.items;
    for (std::size_t family = 0; family < isPresent.size(); ++family)
    {
        item.to[family] = isPresent[family] ? 1 : 0;
        count.variants[family] += item.to[family];
    }
}

bool CMarker::Write()
{
    if (!m_Options.outputPath.empty())
        return WriteOutput();
    return !m_IsDifferent && !m_Options.isAlways ? Succeed() : WriteInPlace();
}

bool CMarker::WriteInPlace()
{
    if (m_IsDifferent && !IsSettled())
        return false;
    m_File.Close(); // nobody may have it open, to get it alone
    CRandomAccessFile file;
    if (!file.OpenToWrite(m_Path))
        return Fail("cannot be opened for writing: " + file.GetError()) && !file.IsBusy();
    // What is only touched may be touched by others, too.
    if (m_IsDifferent && (file.GetState() != m_File.GetState() || (file.IsBusy() && m_IsPatient)))
        return false;
    if (!WriteChanges(file) || (m_Options.isAlways && !file.Touch()))
        return Fail("cannot be written: " + file.GetError());
    return Succeed();
}

bool CMarker::WriteOutput()
{
    CRandomAccessFile old;
    const filesystem::SFileState& state = m_File.GetState();
    if (old.Open(m_Options.outputPath) && old.GetState().device == state.device &&
        old.GetState().inode == state.inode)
        return Fail("the output is the model itself");
    old.Close(); // some systems replace no file that is open

    const auto failToWrite = [&](const std::string& error)
    { return Fail("\"" + m_Options.outputPath + "\" cannot be written: " + error); };
    CReplacementFile output(m_Options.outputPath);
    if (!output.Create())
        return failToWrite(output.GetError());
    bool isReadWhole = true;
    if (!CopyTo(output.GetFile(), isReadWhole) || !WriteChanges(output.GetFile()))
        return failToWrite(output.GetFile().GetError());
    if (!IsSettled() || !m_File.IsUnchanged())
        return false;
    if (!isReadWhole)
        return Fail("cannot be read to its end");
    return output.Replace() ? Succeed() : failToWrite(output.GetError());
}

bool CMarker::CopyTo(CRandomAccessFile& output, bool& isReadWhole)
{
    constexpr std::int64_t largestPiece = std::int64_t{256} * 1024;
    std::vector<unsigned char> piece(
        static_cast<std::size_t>(std::min(largestPiece, m_File.GetSize())));
    isReadWhole = true;
    for (std::int64_t pos = 0; pos < m_File.GetSize() && isReadWhole; pos += largestPiece)
    {
        const std::int64_t size = std::min(largestPiece, m_File.GetSize() - pos);
        isReadWhole = m_File.Read(pos, piece.data(), size) == size;
        if (isReadWhole && !output.Write(pos, piece.data(), size))
            return false;
    }
    return true;
}

bool CMarker::WriteChanges(CRandomAccessFile& file) const
{
    CByteWriter writer(file);
    if (m_Result.isMarkerSet && !writer.Put(m_Sink.GetHeader().processedMarker.offset, MarkerValue))
        return false;
    for (const SMarkItem& item : m_Result.items)
    {
        for (std::size_t family = 0; family < item.to.size(); ++family)
        {
            const std::int64_t offset = item.offset + static_cast<std::int64_t>(family);
            if (item.to[family] != item.from[family] && !writer.Put(offset, item.to[family]))
                return false;
        }
    }
    return writer.Flush();
}

bool CMarker::WriteDepfile()
{
    CDepfile depfile(m_Folder);
    CVariantSearch search(m_Folder, m_Options.isCubemapFolders);
    for (const SMarkItem& item : m_Result.items)
        search.ForEachPath(
            item.kind, item.index, item.name,
            [&](const std::string& path) { depfile.AddVariant(path); });

    std::string reason;
    if (depfile.Write(m_Options.depfilePath, GetTarget(), reason))
        return true;
    Fail(reason);
    return false;
}

/// Fails when the depfile would take the place of something else.
bool CMarker::IsDepfileApart()
{
    const std::string& path = m_Options.depfilePath;
    if (filesystem::GetPlace(path) == filesystem::GetPlace(GetTarget()) ||
        filesystem::IsSameFile(path, GetTarget()) || filesystem::IsSameFile(path, m_Path))
        Fail("the depfile is the model or its output; give it a name of its own");
    else if (IsModel(path))
        Fail("the depfile is another model, or cannot be read; give it a name of its own");
    else
        return true;
    return false;
}

bool CMarker::Succeed()
{
    m_Result.outcome = m_IsDifferent ? SMarkResult::Changed : SMarkResult::Unchanged;
    m_Result.reason.clear();
    return true;
}

bool CMarker::Fail(const std::string& reason)
{
    m_Result.outcome = SMarkResult::Failed;
    m_Result.reason = reason;
    return true;
}

SMarkResult MarkUntilUndisturbed(const std::string& path, const SMarkOptions& options)
{
    using std::chrono::milliseconds;
    constexpr milliseconds patience(32);
    for (milliseconds pause(1);; pause *= 2)
    {
        CMarker marker(path, options, pause < patience);
        if (marker.Mark() || pause > LongestPause)
            return std::move(marker.GetResult());
        std::this_thread::sleep_for(
            std::max<std::chrono::nanoseconds>(pause, marker.GetTimeToSettle()));
    }
}

} // namespace

SMarkResult Mark(const std::string& path, const SMarkOptions& options)
{
    try
    {
        return MarkUntilUndisturbed(path, options);
    }
    catch (const std::exception& exception)
    {
        SMarkResult result;
        result.reason = std::string("cannot be marked: ") + exception.what();
        return result;
    }
}

} // namespace zektool
