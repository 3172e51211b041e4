// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/AccessibilityWalk.h"

#include <algorithm>

QCoro::Task<void> walkBreadthFirst(std::shared_ptr<AccessibilityTree> tree, WalkLimits limits,
                                   WalkVisitor visit)
{
    QList<AccessibilityElement> level{tree->root()};
    qsizetype budget = limits.elements;
    for (int depth = 0; !level.isEmpty(); ++depth) {
        const QList<AccessibilityAttributes> attributes = co_await tree->read(level);
        budget -= level.size();
        QList<AccessibilityElement> next;
        for (qsizetype i = 0; i < level.size(); ++i) {
            if (visit(level.at(i), attributes.at(i)) == WalkStep::Stop)
                co_return;
            // Elements beyond the budget would never be visited.
            if (depth <= limits.depth)
                next += attributes.at(i).children.first(
                    std::min(attributes.at(i).children.size(), budget - next.size()));
        }
        level = next;
    }
}
