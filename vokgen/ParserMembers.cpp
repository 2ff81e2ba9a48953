#include "vokgen/ParserParts.h"

#include <array>

namespace VokGen {

using Ast::MemberKind;
using Ast::OptionKind;

void MemberParser::member( Ast::Type & type )
{
   Ast::Member member;
   const Token first = cursor_.current();
   member.range = first.range;
   try {
      memberBody( member );
      member.documentation = cursor_.documentation( first.index, cursor_.last().index );
   } catch ( const Abandoned & ) {
      member.broken = true;
      type.incomplete = type.incomplete || member.name.empty();
      cursor_.recover( first.index );
      cursor_.documentation( first.index, cursor_.last().index );
   }
   member.range = member.range.upTo( cursor_.last().range );
   if ( !member.name.empty() || !member.broken ) {
      type.members.push_back( std::move( member ) );
   }
}

void MemberParser::memberBody( Ast::Member & member )
{
   member.kindRange = cursor_.current().range;
   if ( cursor_.isWord( { "const" } ) ) {
      constant( member );
   } else if ( cursor_.isWord( { "flag" } ) ) {
      flag( member );
   } else if ( cursor_.isWord( { "function", "method", "static", "mutating" } ) ) {
      function( member );
   } else if ( cursor_.isWord( { "constructor" } ) ) {
      constructor( member );
   } else if ( cursor_.isWord( { "instantiate" } ) ) {
      member.kind = MemberKind::instantiate;
      member.name = cursor_.expectWord( "'instantiate'" );
      options( member );
      cursor_.expectSemicolon( "';' or 'unnumbered'" );
   } else {
      if ( cursor_.isWord( { "derived" } ) && cursor_.ahead().kind == TokenKind::word ) {
         member.kind = MemberKind::derived;
         cursor_.advance();
      }
      attribute( member );
   }
}

void MemberParser::attribute( Ast::Member & member )
{
   if ( cursor_.ahead().kind == TokenKind::word ) {
      cursor_.abandon( "a member, such as 'name : type;'" );
   }
   member.name = cursor_.expectWord( "a member, such as 'name : type;'" );
   cursor_.expect( ":", "':' and a type" );
   attributeType( member );
   options( member );
   cursor_.expectSemicolon( "';' or an option" );
}

/// The word before a type that says what kind of attribute it is; a plain one has none.
void MemberParser::attributeKind( Ast::Member & member )
{
   struct Kind {
      std::string_view word;
      MemberKind kind;
   };
   constexpr std::array< Kind, 6 > kinds = { { { "map", MemberKind::map },
         { "set", MemberKind::set },
         { "children", MemberKind::children },
         { "child", MemberKind::child },
         { "references", MemberKind::references },
         { "optional", MemberKind::optional } } };
   for ( const Kind & kind : kinds ) {
      if ( cursor_.isWord( { kind.word } ) ) {
         if ( member.kind == MemberKind::derived ) {
            cursor_.abandon( "the type of the derived attribute" );
         }
         member.kind = kind.kind;
         member.kindRange = cursor_.current().range;
         cursor_.advance();
         return;
      }
   }
   if ( member.ordered ) {
      cursor_.abandon( "'map', 'set', 'children' or 'references' after 'ordered'" );
   }
}

void MemberParser::attributeType( Ast::Member & member )
{
   if ( cursor_.isWord( { "ordered" } ) ) {
      member.ordered = true;
      cursor_.advance();
   }
   attributeKind( member );
   member.type = cursor_.expectQualifiedName( "a type" );
   if ( member.kind == MemberKind::map && cursor_.take( "->" ) ) {
      member.key = member.type;
      member.type = cursor_.expectQualifiedName( "the type of the map's values after '->'" );
   } else if ( cursor_.take( "by" ) ) {
      member.by = cursor_.expectWord( "the name of the key after 'by'" );
   } else if ( member.kind == MemberKind::map ) {
      cursor_.abandon( "'->' and a type, or 'by' and a field, after the type of a map" );
   } else if ( member.kind == MemberKind::children || member.kind == MemberKind::references ) {
      cursor_.abandon( "'by' and an attribute of the entity that is the key" );
   }
}

void MemberParser::constant( Ast::Member & member )
{
   member.kind = MemberKind::constant;
   cursor_.advance();
   member.name = cursor_.expectWord( "the name of the constant" );
   cursor_.expect( ":", "':' and the type of the constant" );
   member.type = cursor_.expectQualifiedName( "a type" );
   Ast::Option value;
   value.range = cursor_.expect( "=", "'=' and the value of the constant" ).range;
   value.first = expressions_.expression( "a value" );
   member.options.push_back( std::move( value ) );
   cursor_.expectSemicolon();
}

void MemberParser::flag( Ast::Member & member )
{
   member.kind = MemberKind::flag;
   cursor_.advance();
   member.name = cursor_.expectWord( "the name of the flag" );
   cursor_.expect( ":", "':' and the bit of the flag" );
   if ( !cursor_.take( "bit" ) ) {
      cursor_.abandon( "'bit' and a number" );
   }
   member.bitRange = cursor_.current().range;
   member.bit = cursor_.expectInteger( "the number of a bit" );
   if ( !cursor_.take( "of" ) ) {
      cursor_.abandon( "'of' and the field that holds the bit" );
   }
   member.word = cursor_.expectWord( "the field that holds the bit" );
   if ( cursor_.take( "mask" ) ) {
      member.mask = cursor_.expectWord( "the name of the mask" );
   }
   cursor_.expectSemicolon();
}

void MemberParser::function( Ast::Member & member )
{
   member.isStatic = cursor_.take( "static" );
   member.mutating = !member.isStatic && cursor_.take( "mutating" );
   if ( member.isStatic || cursor_.isWord( "method" ) ) {
      if ( !cursor_.take( "method" ) ) {
         cursor_.abandon( "'method' after 'static'" );
      }
      member.kind = MemberKind::method;
   } else {
      if ( !cursor_.take( "function" ) ) {
         cursor_.abandon( "'function' after 'mutating'" );
      }
      member.kind = MemberKind::function;
   }
   functionRest( member );
}

void MemberParser::functionRest( Ast::Member & member )
{
   member.name = cursor_.expectWord( "the name of the function" );
   parameters( member );
   if ( cursor_.take( "->" ) ) {
      member.type = cursor_.expectQualifiedName( "the type of the result after '->'" );
      if ( cursor_.take( "=" ) ) {
         member.text = cursor_.expectText( "the text that the function gives after '='" );
         member.textRange = cursor_.last().range;
      }
      cursor_.expectSemicolon();
      return;
   }
   cursor_.expectSemicolon( "';', or '->' and the type of the result" );
}

void MemberParser::constructor( Ast::Member & member )
{
   member.kind = MemberKind::constructor;
   cursor_.advance();
   parameters( member );
   cursor_.expectSemicolon();
}

void MemberParser::parameters( Ast::Member & member )
{
   cursor_.expect( "(", "'(' and parameters" );
   while ( !cursor_.isSymbol( ")" ) ) {
      if ( !member.parameters.empty() ) {
         cursor_.expect( ",", "',' or ')' after a parameter" );
      }
      Ast::Parameter parameter;
      parameter.name = cursor_.expectWord( "a parameter, such as 'name : type'" );
      cursor_.expect( ":", "':' and the type of the parameter" );
      parameter.type = cursor_.expectQualifiedName( "a type" );
      member.parameters.push_back( std::move( parameter ) );
   }
   cursor_.advance();
}

void MemberParser::options( Ast::Member & member )
{
   while ( true ) {
      Ast::Option parsed;
      parsed.range = cursor_.current().range;
      if ( !option( parsed ) ) {
         return;
      }
      parsed.range = parsed.range.upTo( cursor_.last().range );
      member.options.push_back( std::move( parsed ) );
   }
}

/// Reads one option; false where none begins here.
bool MemberParser::option( Ast::Option & option )
{
   if ( cursor_.take( "=" ) ) {
      option.kind = OptionKind::defaultValue;
      option.first = expressions_.expression( "a default after '='" );
   } else if ( cursor_.take( "from" ) ) {
      option.kind = OptionKind::from;
      option.type = cursor_.expectQualifiedName( "a wider number after 'from'" );
   } else if ( cursor_.take( "in" ) ) {
      option.kind = OptionKind::bounds;
      bounds( option );
   } else if ( cursor_.take( "max" ) ) {
      option.kind = OptionKind::most;
      option.first = expressions_.expression( "the most bytes after 'max'" );
      if ( !cursor_.take( "message" ) ) {
         cursor_.abandon( "'message' and a text after the most bytes" );
      }
      option.text = cursor_.expectText( "the text of the message" );
   } else if ( cursor_.take( "counter" ) ) {
      option.kind = OptionKind::counter;
   } else if ( cursor_.take( "validated" ) ) {
      option.kind = OptionKind::validated;
   } else if ( cursor_.take( "settable" ) ) {
      option.kind = OptionKind::settable;
   } else if ( cursor_.take( "constructed" ) ) {
      option.kind = OptionKind::constructed;
   } else if ( cursor_.take( "unnumbered" ) ) {
      option.kind = OptionKind::unnumbered;
   } else if ( cursor_.take( "empty" ) ) {
      option.kind = OptionKind::empty;
      option.first = expressions_.expression( "the number that means no value" );
   } else if ( cursor_.take( "get" ) ) {
      option.kind = OptionKind::get;
      option.optionalLookup = cursor_.isWord( "optional" );
      if ( !cursor_.take( "optional" ) && !cursor_.take( "same" ) ) {
         cursor_.abandon( "'same' or 'optional' after 'get'" );
      }
   } else {
      return false;
   }
   return true;
}

/// From behind `in`: `lower..upper`, then when they are checked.
void MemberParser::bounds( Ast::Option & option )
{
   option.first = expressions_.expression( "the lower bound after 'in'" );
   cursor_.expect( "..", "'..' and the upper bound" );
   option.second = expressions_.expression( "the upper bound after '..'" );
   if ( cursor_.take( "unchecked" ) ) {
      option.time = Ast::BoundsTime::unchecked;
   } else if ( cursor_.take( "on" ) ) {
      if ( !cursor_.take( "set" ) ) {
         cursor_.abandon( "'set' after 'on'" );
      }
      option.time = Ast::BoundsTime::onSet;
   } else if ( cursor_.isWord( "validated" ) && cursor_.ahead().kind == TokenKind::text ) {
      cursor_.advance();
      option.time = Ast::BoundsTime::validated;
      option.text = cursor_.expectText( "the text of the message" );
      if ( cursor_.take( "except" ) ) {
         option.except = expressions_.expression( "the number that is valid as well" );
      }
   }
}

void MemberParser::arguments( Ast::Type & type )
{
   type.hasArguments = true;
   type.argumentsRange = cursor_.expect( "(", "'('" ).range;
   while ( !cursor_.isSymbol( ")" ) ) {
      Ast::Member member;
      const std::size_t first = cursor_.current().index;
      argument( member );
      argumentEnd( member );
      if ( !member.inheritsDocumentation ) {
         member.documentation = cursor_.documentation( first, cursor_.last().index );
      }
      member.range = member.range.upTo( cursor_.last().range );
      type.members.push_back( std::move( member ) );
   }
   cursor_.advance();
   type.argumentsRange = type.argumentsRange.upTo( cursor_.last().range );
}

void MemberParser::argument( Ast::Member & member )
{
   member.kind = MemberKind::argument;
   member.range = cursor_.current().range;
   member.kindRange = member.range;
   if ( cursor_.isWord( "identity" ) && cursor_.ahead().kind == TokenKind::word ) {
      member.isIdentity = true;
      cursor_.advance();
   }
   member.name = cursor_.expectWord( "an argument, such as 'name' or 'id : type'" );
   if ( member.name.text == "name" && !member.isIdentity && !cursor_.isSymbol( ":" ) ) {
      member.isBareName = true;
      return;
   }
   cursor_.expect( ":", "':' and the type of the argument" );
   if ( cursor_.isWord( { "reference" } ) && cursor_.ahead().kind == TokenKind::word ) {
      member.isReference = true;
      cursor_.advance();
   }
   member.type = cursor_.expectQualifiedName( "a type" );
   options( member );
}

/// An argument that ends in a semicolon is a line with a comment of its own.
void MemberParser::argumentEnd( Ast::Member & member )
{
   if ( cursor_.take( ";" ) ) {
      return;
   }
   member.inheritsDocumentation = true;
   if ( !cursor_.take( "," ) && !cursor_.isSymbol( ")" ) ) {
      cursor_.abandon( "',', ';' or ')' after an argument" );
   }
}

} // namespace VokGen
