#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Averages the weights of two checkpoints of one training run, which often plans better than either.

    average.py step-8600.pt step-12000.pt mixed.pt --share 0.35
"""

import argparse

import torch


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("first")
    parser.add_argument("second", help="the one whose step number the result takes")
    parser.add_argument("target")
    parser.add_argument("--share", type=float, default=0.5, help="of the second one, 0 to 1")
    options = parser.parse_args()
    first, second = torch.load(options.first), torch.load(options.second)
    second["model"] = {
        name: torch.lerp(first["model"][name], weights, options.share)
        for name, weights in second["model"].items()
    }
    torch.save(second, options.target)


if __name__ == "__main__":
    main()
