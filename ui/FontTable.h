#pragma once

#include "ui/FormData.h"

// The faces of the forms. Traditional Arabic draws small for its points, so it gets more of them.

namespace vw::fonts {

inline constexpr FontPair kSystem{};
inline constexpr FontPair kLabel{{L"Arial", 9}, {L"Traditional Arabic", 11}};
inline constexpr FontPair kArial{{L"Arial", 9}, {L"Arial", 9}};
inline constexpr FontPair kTimes{{L"Times New Roman", 10}, {L"Times New Roman", 10}};
inline constexpr FontPair kText{{L"Times New Roman", 10}, {L"Traditional Arabic", 11}};
inline constexpr FontPair kReport{{L"Times New Roman", 10}, {L"Arial", 9}};
inline constexpr FontPair kBoldText{{L"Times New Roman", 10, true},
                                    {L"Traditional Arabic", 11, true}};
inline constexpr FontPair kTitle{{L"Times New Roman", 24, true}, {L"Traditional Arabic", 24, true}};
inline constexpr FontPair kButton{{L"MS Sans Serif", 9}, {L"MS Sans Serif", 9, false, true}};

}  // namespace vw::fonts
