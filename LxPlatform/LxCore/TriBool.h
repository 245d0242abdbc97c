#pragma once
// Three-valued flag: 0 failure, 1 success, 2 neutral (neither).

enum class TriBool : int { False = 0, True = 1, Neutral = 2 };
