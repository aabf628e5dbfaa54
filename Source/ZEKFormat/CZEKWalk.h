#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "ZEKFormat/CZEKFields.h"
#include "ZEKFormat/EZEKFieldType.h"
#include "ZEKFormat/SZEKFault.h"
#include "ZEKFormat/SZEKPlace.h"

namespace zek
{

/// Moves over a model file and is the one place where its bytes are bounded, named and refused. The
/// sections (`ZEKNodeSection.h` and the others) say through it what the format is.
///
/// The bytes come from a source: `CZEKImageSource`, `CZEKFileSource`. Who wants to know what is
/// walked over is the sink (see `CZEKSink`); one that does not listen costs nothing.
///
/// Every function that returns a bool returns false where the file has to be refused, after the
/// sink has heard why. The position is then where the demand was made that is not met, the end of
/// the file after a text without an end, or after a wrong value.
template <typename Source, typename Sink>
class CZEKWalk
{
public:
    static constexpr bool IsMeasuring = false;

    /// Borrows both.
    CZEKWalk(Source& source, Sink& sink) : m_Source(source), m_Sink(sink) {}

    Sink& GetSink() { return m_Sink; }

    /// Tells whether not even an int is left.
    bool IsLeftLessThanInt() const { return m_Source.GetLeft() < GetSize(EZEKFieldType::Int); }

    /// Walks fields that are demanded as a whole. The fields are a function of `CZEKFields`.
    template <typename WalkFields>
    bool Block(const char* name, WalkFields walkFields)
    {
        return Block(name, Measure(walkFields), walkFields);
    }

    /// The same where the format demands another number of bytes, at least that of the fields.
    template <typename WalkFields>
    bool Block(const char* name, int demand, WalkFields walkFields)
    {
        if (!Demand(name, demand) || !Fetch(name, demand))
            return false;
        CZEKFields<CZEKWalk> fields(*this);
        walkFields(fields);
        return true;
    }

    /// Walks an int that is demanded by itself.
    bool Int(const char* name, int& value)
    {
        return Block(
            name, GetSize(EZEKFieldType::Int), [&](auto& fields) { value = fields.Int(name); });
    }

    /// Walks an int that must be 0 or 1.
    bool Switch(const char* name, int& value)
    {
        return Int(name, value) && Expect(value == 0 || value == 1, name, value, "0 or 1");
    }

    /// Walks a text that a zero byte ends. The value is valid until the next text.
    bool Text(const char* name, std::string_view& value)
    {
        const std::int64_t offset = m_Source.GetPos();
        const std::int64_t left = m_Source.GetLeft();
        if (!m_Source.TakeText(value))
            return Refuse(
                {m_Source.IsUnreadable() ? SZEKFault::Unreadable : SZEKFault::Unterminated, name,
                 offset, left, left});
        m_Sink.Text(name, offset, value);
        return true;
    }

    /// Walks an array whose elements are demanded as a whole. A sink that wants the elements walks
    /// each, and keep is called after it.
    ///
    /// The format demands the product of size and count as a 32-bit int, wrapped, so that some
    /// counts below zero fail. A positive count passes only if its elements are really there.
    template <typename WalkElement, typename Keep>
    bool Array(const char* name, int count, WalkElement walkElement, Keep keep)
    {
        const int size = Measure(walkElement);
        const unsigned int product = static_cast<unsigned int>(size) * static_cast<unsigned>(count);
        if (!Demand(name, static_cast<int>(product)))
            return false;
        if (count > 0 && !Demand(name, std::int64_t{size} * count))
            return false;
        return Elements(name, size, std::max(count, 0), walkElement, keep);
    }

    /// The same for an array whose elements are demanded one by one.
    template <typename WalkElement, typename Keep>
    bool ArrayOneByOne(const char* name, int count, WalkElement walkElement, Keep keep)
    {
        const int size = Measure(walkElement);
        const std::int64_t there =
            std::clamp<std::int64_t>(m_Source.GetLeft() / size, 0, std::max(count, 0));
        return Elements(name, size, there, walkElement, keep) &&
               (there >= count || Demand(name, size));
    }

    /// Walks as many records as a count says, calling walkRecord for each. A count of zero or less
    /// means none.
    template <typename WalkRecord>
    bool Records(const char* kind, int count, WalkRecord walkRecord)
    {
        m_Sink.BeginRecords(kind, count, m_Source.GetLeft());
        for (int i = 0; i < count; ++i)
        {
            m_Sink.BeginRecord(kind, i);
            if (!walkRecord(i))
                return false;
            m_Sink.EndRecord();
        }
        return true;
    }

    /// Demands that size bytes are left. A negative size always passes.
    bool Demand(const char* name, std::int64_t size)
    {
        const std::int64_t left = m_Source.GetLeft();
        if (size > left)
            return Refuse({SZEKFault::TooShort, name, m_Source.GetPos(), size, left});
        return true;
    }

    /// Refuses the int that has just been walked unless its value holds.
    bool Expect(bool holds, const char* name, int value, const char* expected)
    {
        if (holds)
            return true;
        const std::int64_t offset = m_Source.GetPos() - GetSize(EZEKFieldType::Int);
        return Refuse({SZEKFault::WrongValue, name, offset, 0, 0, {}, value, expected});
    }

    /// Tells the sink why the file is refused, and returns false.
    bool Refuse(const SZEKFault& fault)
    {
        m_Sink.Refuse(fault);
        return false;
    }

    /// Takes a field of a block, whose bytes have been demanded. For `CZEKFields`.
    const unsigned char* Take(const char* name, EZEKFieldType type, int count)
    {
        const std::int64_t offset = m_Source.GetPos();
        const unsigned char* bytes = m_Source.Take(count * GetSize(type));
        m_Sink.Field(name, type, count, offset, bytes);
        return bytes;
    }

    /// Returns where the next field lies. For `CZEKFields`.
    SZEKPlace GetPlace() const { return {m_Source.GetNext(), m_Source.GetPos()}; }

    /// Returns how many bytes fields take.
    template <typename WalkFields>
    static int Measure(WalkFields walkFields)
    {
        CZEKBlockSize size;
        CZEKFields<CZEKBlockSize> fields(size);
        walkFields(fields);
        return size.GetTotal();
    }

private:
    /// Has the source get the bytes of a block. They are left by the file's size; that the file
    /// does not give them all the same is another fault.
    bool Fetch(const char* name, int size)
    {
        return m_Source.Fetch(size) ||
               Refuse({SZEKFault::Unreadable, name, m_Source.GetPos(), size, m_Source.GetLeft()});
    }

    /// Walks or steps over elements that are there.
    template <typename WalkElement, typename Keep>
    bool
    Elements(const char* name, int size, std::int64_t count, WalkElement walkElement, Keep keep)
    {
        if (!m_Sink.WantsElements(name))
        {
            m_Sink.Array(name, m_Source.GetPos(), size, count);
            m_Source.Skip(size * count);
            return true;
        }
        for (std::int64_t i = 0; i < count; ++i)
        {
            m_Sink.BeginElement(name, i);
            if (!Block(name, size, walkElement))
                return false;
            keep();
            m_Sink.EndElement();
        }
        return true;
    }

    Source& m_Source;
    Sink& m_Sink;
};

} // namespace zek
