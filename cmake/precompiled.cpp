// Holds nothing: a target whose headers are precompiled for others needs a source
// (cmake/PrecompiledHeaders.cmake).
// SPDX-License-Identifier: LGPL-2.1-or-later
