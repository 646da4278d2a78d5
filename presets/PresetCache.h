#pragma once

class PresetCache;
