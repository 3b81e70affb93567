// Message texts of the core's exceptions.
#include "ZvErrors.h"

namespace zv {

std::string GetErrorMessage(std::int32_t ErrorType, const std::string& Token, std::int32_t Position,
                            std::int32_t Line) {
    switch (ErrorType) {
    case zvpeInvalidToken:
        return "Invalid token '" + Token + "' at position " + std::to_string(Position) + " of line " +
               std::to_string(Line) + ".";
    case zvpeUnexpectedEnd:
        return "Unexpected end of statement.";
    case zvpeUnterminatedString:
        return "Unterminated string.";
    case zvpeFieldNotFound:
        return "Field '" + Token + "' not found.";
    case zvpeInadmissibleJoin:
        return "Inadmissible JOIN expression.";
    default:
        return "Unknown error (#" + std::to_string(ErrorType) + ").";
    }
}

EZvParserError::EZvParserError(std::int32_t ErrorType_, const std::string& Token_, std::int32_t Position_,
                               std::int32_t Line_)
    : std::runtime_error(GetErrorMessage(ErrorType_, Token_, Position_, Line_)), ErrorType(ErrorType_),
      Line(Line_), Position(Position_), Token(Token_) {}

} // namespace zv
