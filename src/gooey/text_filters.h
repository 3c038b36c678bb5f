#pragma once

// Filters of text inputs; see TextFilter.

/// A number: digits, one full stop (a comma becomes one), a minus sign at the start.
int FPFilter(int& character, int position, const char* text);
/// The same without the minus sign.
int PositiveFPFilter(int& character, int position, const char* text);
/// Codes 32 to 126.
int AsciiFilter(int& character, int position, const char* text);
/// Any character that can be shown, of any script.
int PrintableFilter(int& character, int position, const char* text);
/// Letters of any script, digits and the blank: what an input without a filter accepts.
int AlphanumericFilter(int& character, int position, const char* text);
