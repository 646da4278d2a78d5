#pragma once

/// Keeps the module that this code is part of in memory to the end of the process, whoever unloads it: for a
/// thread that can't be ended before. Thread: any but audio.
void pinModule();
