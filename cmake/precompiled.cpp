// Holds nothing: a target whose headers are precompiled for others needs a source
// (cmake/PrecompiledHeaders.cmake).
