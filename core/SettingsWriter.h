#pragma once

#include "core/SettingSerializer.h"
#include "foundation/SettingsText.h"

/// Writes to the user's settings under a key. All it is given goes into the store at once, when it is
/// destroyed; a store that can't be written drops it in silence.
class SettingsWriter : public SettingSerializer {
public:
    /// @param storeKey  as `settingsKey` gives it
    explicit SettingsWriter(std::string storeKey) : key(std::move(storeKey)) {}
    SettingsWriter(const SettingsWriter&) = delete;
    SettingsWriter& operator=(const SettingsWriter&) = delete;
    ~SettingsWriter() override;

    bool isWriter() const override { return true; }
    void bytes(const std::string& name, std::vector<std::uint8_t>& buffer) override;
    std::int32_t intValue(const std::string& name, std::int32_t value, std::int32_t fallback) override;
    std::string stringValue(const std::string& name, const std::string& value,
                            const std::string& fallback) override;

private:
    std::string key;
    SettingValues values;
};
