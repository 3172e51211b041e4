// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"

#include <QCoroTask>

#include <functional>
#include <memory>

// Limits of a walk: the number of elements examined, and the depth of the deepest elements whose children are
// visited (the root has depth 0).
struct WalkLimits
{
    qsizetype elements = 0;
    int depth = 0;
};

enum class WalkStep { Continue, Stop };

// Called for each element; returns whether to continue.
using WalkVisitor = std::function<WalkStep(AccessibilityElement, const AccessibilityAttributes &)>;

// Visits a tree breadth first, in the same order as one element at a time, but reads each level in one
// request. Cycles and unlimited depth are bounded by the limits. Everything the visitor refers to must
// outlive the task. Thread: main.
QCoro::Task<void> walkBreadthFirst(std::shared_ptr<AccessibilityTree> tree, WalkLimits limits,
                                   WalkVisitor visit);
