// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"

#include <QCoroTask>

#include <functional>
#include <memory>

// How far a walk goes: so many elements are examined at most, and children are taken from elements no deeper
// than this (the root has depth 0).
struct WalkLimits
{
    qsizetype elements = 0;
    int depth = 0;
};

enum class WalkStep { Continue, Stop };

// Looks at one element of a walk and says whether to go on.
using WalkVisitor = std::function<WalkStep(AccessibilityElement, const AccessibilityAttributes &)>;

// Visits a tree breadth first, exactly as if the elements were read one at a time, but reads a level in one
// request. A tree with cycles or endless levels costs no more than the limits. Main thread; whatever the
// visitor refers to must live until the task has ended.
QCoro::Task<void> walkBreadthFirst(std::shared_ptr<AccessibilityTree> tree, WalkLimits limits,
                                   WalkVisitor visit);
