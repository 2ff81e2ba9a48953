#include "vokgen/ParserParts.h"

#include <charconv>

namespace VokGen {

Ast::Expression ExpressionParser::expression( std::string_view what )
{
   const Token & token = cursor_.current();
   if ( cursor_.isSymbol( "(" ) ) {
      return sum();
   }
   if ( token.kind == TokenKind::text ) {
      Ast::Expression result;
      result.kind = Ast::Expression::Kind::text;
      result.range = token.range;
      result.text = cursor_.expectText( what );
      return result;
   }
   const bool negatedWord = cursor_.isSymbol( "-" ) && cursor_.ahead().kind == TokenKind::word;
   if ( token.kind == TokenKind::word || negatedWord ) {
      Ast::Expression result;
      result.kind = Ast::Expression::Kind::word;
      result.range = token.range;
      result.negative = cursor_.take( "-" );
      const Ast::Name name = cursor_.expectQualifiedName( what );
      result.range = result.range.upTo( name.range );
      result.text = name.text;
      return result;
   }
   return number( what );
}

Ast::Expression ExpressionParser::number( std::string_view what )
{
   Ast::Expression result;
   result.range = cursor_.current().range;
   result.negative = cursor_.take( "-" );
   const Token token = cursor_.current();
   result.text = ( result.negative ? "-" : "" ) + std::string( cursor_.text( token ) );
   result.range = result.range.upTo( token.range );
   if ( token.kind == TokenKind::real ) {
      result.kind = Ast::Expression::Kind::real;
      const std::string_view digits = cursor_.text( token );
      const auto read =
            std::from_chars( digits.data(), digits.data() + digits.size(), result.real );
      cursor_.advance();
      if ( read.ec != std::errc() ) {
         cursor_.error( token.range, Message::realOutOfRange, { std::string( digits ) } );
         throw Abandoned();
      }
      return result;
   }
   result.kind = Ast::Expression::Kind::integer;
   result.integer = cursor_.expectInteger( what );
   return result;
}

/// `( a + 1 - b )`: names and numbers, without parentheses within.
Ast::Expression ExpressionParser::sum()
{
   Ast::Expression result;
   result.kind = Ast::Expression::Kind::sum;
   result.range = cursor_.expect( "(", "'('" ).range;
   result.terms.push_back( term() );
   while ( cursor_.isSymbol( "+" ) || cursor_.isSymbol( "-" ) ) {
      const bool subtracted = cursor_.isSymbol( "-" );
      cursor_.advance();
      result.terms.push_back( term() );
      result.terms.back().subtracted = subtracted;
   }
   result.range = result.range.upTo( cursor_.expect( ")", "'+', '-' or ')' in a sum" ).range );
   return result;
}

Ast::Term ExpressionParser::term()
{
   Ast::Term result;
   if ( cursor_.current().kind == TokenKind::integer ) {
      const Token token = cursor_.current();
      result.integer = cursor_.expectInteger( "a number" );
      result.name = { std::string( cursor_.text( token ) ), token.range };
   } else {
      result.kind = Ast::Term::Kind::name;
      result.name = cursor_.expectQualifiedName( "a number or a name in a sum" );
   }
   return result;
}

} // namespace VokGen
