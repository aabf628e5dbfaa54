#pragma once

// Stands with the format, whose walk reads it; the model classes are built on it.
#include "ZEKFormat/EZEKColliderType.h" // IWYU pragma: export
