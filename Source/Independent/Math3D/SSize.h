#pragma once

/// A size of two floats.
struct SSize
{
    float width = 0.0f;
    float height = 0.0f;

    /// (0, 0).
    SSize() = default;

    /// (newWidth, newHeight).
    SSize(float newWidth, float newHeight) : width(newWidth), height(newHeight) {}

    /// Copies both components.
    SSize(const SSize& other) = default;

    /// Copies both components.
    SSize& operator=(const SSize& other) = default;

    /// Virtual, so that other types may derive from this one.
    virtual ~SSize() = default;

    /// The sum, component by component.
    SSize operator+(const SSize& other) const
    {
        return SSize(width + other.width, height + other.height);
    }

    /// The difference, component by component.
    SSize operator-(const SSize& other) const
    {
        return SSize(width - other.width, height - other.height);
    }
};
