// A program that does nothing: what starting any program costs.
// SPDX-License-Identifier: LGPL-2.1-or-later
int main() { return 0; }
