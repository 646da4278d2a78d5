#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>

// The files that the program carries within itself. Whatever follows the last "." of a name is cut, and
// letter case doesn't matter: "Prime.fil" and "PRIME" are the same resource. Thread: any.

/// A resource was asked for that isn't there. Who can go on without it asks `resourceExists` first.
class EResource : public std::runtime_error {
public:
    EResource();
};

bool resourceExists(std::string_view name) noexcept;

/// The bytes of a resource, valid as long as the program is loaded; no bytes if there is no such resource.
std::span<const std::byte> findResource(std::string_view name) noexcept;

/// A seekable stream over a copy of the resource's bytes. Throws EResource.
std::unique_ptr<std::istream> openResource(std::string_view name);
