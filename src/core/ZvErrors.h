// The two exception types of the core: EZvParserError for faults in statement text, carrying
// where they are, and EZvError for misuse of the model. Their message texts are the system's own.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace zv {

// A general error: misuse of an object or an operation refused by a precondition.
class EZvError : public std::runtime_error {
public:
    explicit EZvError(const std::string& Message) : std::runtime_error(Message) {}
};

// A text that should hold a number does not (the standard string-to-integer rule failed).
class EZvConvertError : public EZvError {
public:
    explicit EZvConvertError(const std::string& Message) : EZvError(Message) {}
};

// Error types of EZvParserError. Any other value is reported as an unknown error.
enum : std::int32_t {
    zvpeInvalidToken = 1,
    zvpeUnexpectedEnd = 2,
    zvpeUnterminatedString = 3,
    zvpeFieldNotFound = 4,
    zvpeInadmissibleJoin = 5,
};

// The message for an error type, with the token, position and line filled in where the type
// uses them:
//   1 "Invalid token '%s' at position %d of line %d."   4 "Field '%s' not found."
//   2 "Unexpected end of statement."                    5 "Inadmissible JOIN expression."
//   3 "Unterminated string."                            * "Unknown error (#%d)."
std::string GetErrorMessage(std::int32_t ErrorType, const std::string& Token, std::int32_t Position,
                            std::int32_t Line);

// A fault in statement text. Position is the 1-based column at which the offending token begins.
class EZvParserError : public std::runtime_error {
public:
    EZvParserError(std::int32_t ErrorType, const std::string& Token, std::int32_t Position,
                   std::int32_t Line);

    std::int32_t GetErrorType() const { return ErrorType; }
    std::int32_t GetLine() const { return Line; }
    std::int32_t GetPosition() const { return Position; }
    const std::string& GetToken() const { return Token; }

private:
    std::int32_t ErrorType;
    std::int32_t Line;
    std::int32_t Position;
    std::string Token;
};

} // namespace zv
