#pragma once

#include "stress/Random.h"

#include <string>

/// A project's state as a failing disk gives it back: cut short, or with bytes and whole numbers changed.
std::string damaged(std::string state, Random& random);
