# SPDX-License-Identifier: Apache-2.0
"""The practice planner: model, training data and tokenizer."""
