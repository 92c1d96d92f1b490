#pragma once

// Tag asking a constructor to leave the value unwritten, for a caller about to overwrite it:
//   C3DMatrix33Tpl<double> m(C3DInitRequest_DoNotInitialize{});
struct C3DInitRequest_DoNotInitialize {};
