#pragma once

#include "client/HeatInk.h"
#include "client/HeatScale.h"

namespace korvax::client {

/// What the levels of a heat map mean, in at most `width` characters: each level with the smallest count that it
/// stands for; where they don't fit, some of them with the coldest and the hottest.
QString Legend(const HeatScale& scale, const HeatInk& ink, int width);

}  // namespace korvax::client
