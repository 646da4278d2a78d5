#pragma once

#include "core/SettingSerializer.h"
#include "foundation/SettingsText.h"

/// Reads from the user's settings under a key. All it gives is from one moment, that of its construction.
/// What is missing, or has another type, gives the fallback.
class SettingsReader : public SettingSerializer {
public:
    /// @param storeKey  as `settingsKey` gives it
    explicit SettingsReader(const std::string& storeKey);

    bool isWriter() const override { return false; }
    void bytes(const std::string& key, std::vector<std::uint8_t>& buffer) override;
    std::int32_t intValue(const std::string& key, std::int32_t value, std::int32_t fallback) override;
    std::string stringValue(const std::string& key, const std::string& value,
                            const std::string& fallback) override;

private:
    /// Null if there is none of this type.
    template <class T>
    const T* find(const std::string& key) const;

    SettingValues values;
};
