#pragma once

/// What starts an envelope generator.
enum class Triggering { NormalInput, SideChain, Midi };
