# SPDX-License-Identifier: Apache-2.0
"""The practice planner: a tiny model of Orvane's plans, its training data and its tokenizer."""
