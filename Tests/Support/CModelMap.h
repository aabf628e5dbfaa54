#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Support/CModelFields.h"
#include "Support/SModel.h"

namespace testsupport
{

/// Why and where a model file has to be refused.
struct SFault
{
    enum EKind
    {
        TooShort,
        Unterminated,
        WrongValue
    };

    EKind kind = TooShort;
    std::string section;
    int index = -1;    ///< of the record, or -1 outside of one
    std::string name;  ///< of the record, once read
    std::string field; ///< with its path in the record
    std::size_t offset = 0;
    long long demanded = 0; ///< when too short
    std::size_t left = 0;   ///< bytes from offset on
    std::string value;      ///< the wrong one
    std::string expected;
    std::size_t stop = 0; ///< the position that a walk has reached
};

/// Reads a model file of any version by the description in ModelDescription.h, slowly and without
/// the library: what the walkers make of a file must agree with it.
class CModelMap : public CModelFields
{
public:
    /// Borrows an image for as long as the constructor takes.
    explicit CModelMap(const std::vector<unsigned char>& image);

    /// False when the file has to be refused. The lists then hold what precedes the fault.
    bool IsAccepted() const { return m_IsAccepted; }

    /// Why the file is not accepted.
    const SFault& GetFault() const { return m_Fault; }

    /// Where the last field ends.
    std::size_t GetEnd() const { return m_Pos; }

    /// What was read.
    const SModel& GetModel() const { return m_Model; }

    /// The names that the probes' variants have: before version 26 their indices.
    std::vector<std::string> GetProbeNames() const;

    // What the description calls. Every value is read.

    void SetVersion(int version) { m_Version = version; }
    void Demand(const std::string& name, long long size);
    void Expect(bool holds, const std::string& name, int value, const std::string& expected);
    void Expect(
        bool holds, const std::string& name, const std::string& value, const std::string& expected);
    bool IsThere(bool& isThere);

    void Int(const std::string& name, int& value);
    void Switch(const std::string& name, int& value);
    void Word(const std::string& name, int& value);
    void Text(const std::string& name, std::string& text);
    void Floats(const std::string& name, float* values, int count);
    void Bytes(const std::string& name, unsigned char* values, int count);

    // Values that a model does not hold.
    void Floats(const std::string& name, int count) { Skip(name, EFieldKind::Float, count); }
    void Shorts(const std::string& name, int count) { Skip(name, EFieldKind::Short, count); }
    void Filler(const std::string& name, int count) { Skip(name, EFieldKind::Byte, count); }

    template <typename Item>
    SCount Count(const std::string& name, std::vector<Item>& items)
    {
        SCount count = {0, m_Pos};
        Int(name, count.value);
        items.clear();
        return count;
    }

    /// The list is demanded whole: its 32-bit product and, of a positive count, what it really is.
    template <typename Describe>
    void Array(const std::string& name, int size, int count, Describe describe)
    {
        const long long product = static_cast<long long>(size) * count;
        Demand(name, static_cast<int>(static_cast<unsigned int>(product)));
        if (count > 0)
            Demand(name, product);
        Elements(name, static_cast<std::size_t>(size), count, describe);
    }

    /// Each element is demanded where it is read.
    template <typename Describe>
    void ArrayOneByOne(const std::string& name, int size, int count, Describe describe)
    {
        const auto demandAndDescribe = [&](std::size_t i)
        {
            if (size > GetLeft())
            {
                Leave();
                Demand(name, size);
            }
            describe(i);
        };
        Elements(name, static_cast<std::size_t>(size), count, demandAndDescribe);
    }

private:
    long long GetLeft() const { return static_cast<long long>(m_Image.size() - m_Pos); }
    void Skip(const std::string& name, EFieldKind kind, int count);
    unsigned int GetNumber(std::size_t offset, std::size_t size) const;

    /// The name of the record that is read, or nothing when it has none or not yet.
    std::string GetRecordName() const;

    [[noreturn]] void
    Refuse(SFault::EKind kind, const std::string& name, std::size_t offset, std::size_t stop);

    const std::vector<unsigned char>& m_Image;
    SModel m_Model;
    bool m_IsAccepted = false;
    SFault m_Fault;
};

} // namespace testsupport
