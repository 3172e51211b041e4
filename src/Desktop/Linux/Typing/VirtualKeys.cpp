// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/VirtualKeys.h"

#include <QHash>

#include <xkbcommon/xkbcommon-keysyms.h>

std::optional<std::uint32_t> symbolOfVirtualKey(std::uint16_t virtualKey)
{
    static const QHash<std::uint16_t, std::uint32_t> symbols{
        {0, XKB_KEY_a},      {1, XKB_KEY_s},          {2, XKB_KEY_d},
        {3, XKB_KEY_f},      {4, XKB_KEY_h},          {5, XKB_KEY_g},
        {6, XKB_KEY_z},      {7, XKB_KEY_x},          {8, XKB_KEY_c},
        {9, XKB_KEY_v},      {11, XKB_KEY_b},         {12, XKB_KEY_q},
        {13, XKB_KEY_w},     {14, XKB_KEY_e},         {15, XKB_KEY_r},
        {16, XKB_KEY_y},     {17, XKB_KEY_t},         {18, XKB_KEY_1},
        {19, XKB_KEY_2},     {20, XKB_KEY_3},         {21, XKB_KEY_4},
        {22, XKB_KEY_6},     {23, XKB_KEY_5},         {24, XKB_KEY_equal},
        {25, XKB_KEY_9},     {26, XKB_KEY_7},         {27, XKB_KEY_minus},
        {28, XKB_KEY_8},     {29, XKB_KEY_0},         {30, XKB_KEY_bracketright},
        {31, XKB_KEY_o},     {32, XKB_KEY_u},         {33, XKB_KEY_bracketleft},
        {34, XKB_KEY_i},     {35, XKB_KEY_p},         {36, XKB_KEY_Return},
        {37, XKB_KEY_l},     {38, XKB_KEY_j},         {39, XKB_KEY_apostrophe},
        {40, XKB_KEY_k},     {41, XKB_KEY_semicolon}, {42, XKB_KEY_backslash},
        {43, XKB_KEY_comma}, {44, XKB_KEY_slash},     {45, XKB_KEY_n},
        {46, XKB_KEY_m},     {47, XKB_KEY_period},    {48, XKB_KEY_Tab},
        {49, XKB_KEY_space}, {51, XKB_KEY_BackSpace}, {53, XKB_KEY_Escape},
        {123, XKB_KEY_Left}, {124, XKB_KEY_Right},    {125, XKB_KEY_Down},
        {126, XKB_KEY_Up}};
    const auto found = symbols.constFind(virtualKey);
    return found == symbols.constEnd() ? std::nullopt : std::optional(*found);
}
