#pragma once

/// A size of two floats.
struct SSize
{
    float width = 0.0f;
    float height = 0.0f;

    /// (0, 0).
    constexpr SSize() = default;

    /// (newWidth, newHeight).
    constexpr SSize(float newWidth, float newHeight) noexcept : width(newWidth), height(newHeight)
    {
    }

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    SSize(const SSize& other) = default;
    SSize(SSize&& other) = default;
    SSize& operator=(const SSize& other) = default;
    SSize& operator=(SSize&& other) = default;
    virtual ~SSize() = default;

    /// The sum, component by component.
    [[nodiscard]] SSize operator+(const SSize& other) const noexcept
    {
        return SSize(width + other.width, height + other.height);
    }

    /// The difference, component by component.
    [[nodiscard]] SSize operator-(const SSize& other) const noexcept
    {
        return SSize(width - other.width, height - other.height);
    }
};
