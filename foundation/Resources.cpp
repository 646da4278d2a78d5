#include "foundation/Resources.h"

#include "resources/ResourceTable.h"

#include <algorithm>
#include <sstream>
#include <string>

namespace {

char upperCase(char c) noexcept { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string_view stemOf(std::string_view name) noexcept { return name.substr(0, name.rfind('.')); }

bool isNamed(const CarriedResource& resource, std::string_view stem) noexcept
{
    return std::equal(stem.begin(), stem.end(), resource.name.begin(), resource.name.end(),
                      [](char asked, char carried) { return upperCase(asked) == carried; });
}

const CarriedResource* lookUp(std::string_view name) noexcept
{
    const std::string_view stem = stemOf(name);
    for (const CarriedResource& resource : carriedResources()) {
        if (isNamed(resource, stem))
            return &resource;
    }
    return nullptr;
}

}  // namespace

EResource::EResource() : std::runtime_error("Resource not found") {}

bool resourceExists(std::string_view name) noexcept { return lookUp(name) != nullptr; }

std::span<const std::byte> findResource(std::string_view name) noexcept
{
    const CarriedResource* resource = lookUp(name);
    return resource ? resource->bytes : std::span<const std::byte>();
}

std::unique_ptr<std::istream> openResource(std::string_view name)
{
    const CarriedResource* resource = lookUp(name);
    if (!resource)
        throw EResource();
    return std::make_unique<std::istringstream>(
        std::string(reinterpret_cast<const char*>(resource->bytes.data()), resource->bytes.size()));
}
