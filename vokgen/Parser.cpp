#include "vokgen/Parser.h"

#include "vokgen/ParserParts.h"

namespace VokGen {
namespace {

constexpr std::size_t depthLimit = 64;
constexpr std::size_t nameSpaceLimit = 255; // bytes of the full name

Ast::TypeKind kindOf( std::string_view word )
{
   return word == "enum"       ? Ast::TypeKind::enumeration
         : word == "constants" ? Ast::TypeKind::constants
         : word == "value"     ? Ast::TypeKind::value
                               : Ast::TypeKind::entity;
}

/// A modifier of one word that such a type takes.
bool isModifier( Ast::TypeKind kind, std::string_view word )
{
   if ( kind == Ast::TypeKind::entity ) {
      return word == "nofactory";
   }
   return kind == Ast::TypeKind::value &&
         ( word == "ordered" || word == "fixed" || word == "truth" || word == "unhashable" ||
               word == "untextable" );
}

/// What may follow the name and the arguments of a type.
const char * modifiersOf( Ast::TypeKind kind )
{
   switch ( kind ) {
   case Ast::TypeKind::value:
      return "'ordered', 'fixed', 'truth', 'unhashable', 'untextable', 'by hand' or '{'";
   case Ast::TypeKind::entity:
      return "'checks', 'nofactory' or '{'";
   default:
      return "'{'";
   }
}

} // namespace

Ast::Module parse( const SourceFile & file, Diagnostics & diagnostics )
{
   return FileParser( file, diagnostics ).parse();
}

Ast::Module FileParser::parse()
{
   try {
      moduleHeader();
   } catch ( const Abandoned & ) {
      cursor_.recover( 0 );
      cursor_.documentation( 0, cursor_.last().index );
      module_.incomplete = true;
   }
   declarations( 0 );
   cursor_.reportUnclaimedComments();
   return std::move( module_ );
}

void FileParser::moduleHeader()
{
   const std::size_t first = cursor_.current().index;
   if ( !cursor_.take( "module" ) ) {
      cursor_.abandon( "'module' and the name of the module" );
   }
   module_.name = cursor_.expectWord( "the name of the module" );
   module_.documentation = cursor_.documentation( first, cursor_.last().index );
   while ( cursor_.take( "use" ) ) {
      do {
         module_.uses.push_back( cursor_.expectWord( "the name of a module" ) );
      } while ( cursor_.take( "," ) );
   }
}

/// Up to the end of the file, or to the brace that closes the namespace they stand in.
void FileParser::declarations( std::size_t depth )
{
   while ( !cursor_.atEnd() && ( depth == 0 || !cursor_.isSymbol( "}" ) ) ) {
      const std::size_t first = cursor_.current().index;
      try {
         declaration( depth );
      } catch ( const Abandoned & ) {
         module_.incomplete = true;
         cursor_.recover( first );
         cursor_.documentation( first, cursor_.last().index );
      }
   }
}

void FileParser::declaration( std::size_t depth )
{
   if ( cursor_.isSymbol( "}" ) && module_.incomplete ) {
      cursor_.advance(); // It may close what could not be read.
   } else if ( cursor_.isWord( { "namespace" } ) ) {
      nameSpace( depth );
   } else if ( cursor_.isWord( { "enum", "constants", "value", "entity" } ) ) {
      type( module_.types );
   } else if ( cursor_.isWord( { "function" } ) ) {
      freeFunction();
   } else if ( cursor_.isWord( { "extern" } ) ) {
      external();
   } else if ( cursor_.isWord( { "use" } ) ) {
      cursor_.abandon( "a declaration ('use' stands at the top, after 'module')" );
   } else {
      cursor_.abandon(
            "'namespace', 'enum', 'constants', 'value', 'entity', 'function' or 'extern'" );
   }
}

void FileParser::nameSpace( std::size_t depth )
{
   cursor_.advance();
   const Ast::Name name = cursor_.expectQualifiedName( "the name of the namespace" );
   const Token opening = cursor_.current();
   if ( !cursor_.take( "{" ) ) {
      cursor_.reportExpected( "'{' after the name of the namespace" );
   }
   const std::string outer = nameSpace_;
   nameSpace_ += ( outer.empty() ? "" : "::" ) + name.text;
   if ( depth == depthLimit || nameSpace_.size() > nameSpaceLimit ) {
      cursor_.error( name.range, Message::tooDeep,
            { std::to_string( depthLimit ), std::to_string( nameSpaceLimit ) } );
      nameSpace_ = outer;
      throw Abandoned();
   }
   module_.namespaces.push_back( { nameSpace_, name.range } );
   declarations( depth + 1 );
   closingBrace( opening.range, "namespace " + name.text );
   nameSpace_ = outer;
}

void FileParser::closingBrace( Range opening, const std::string & what )
{
   if ( cursor_.take( "}" ) ) {
      return;
   }
   if ( !endReported_ && cursor_.reportExpected( "'}' at the end of " + what ) ) {
      cursor_.note( opening, Message::openedHere, { what } );
   }
   endReported_ = endReported_ || cursor_.atEnd();
}

void FileParser::external()
{
   Ast::External external;
   const Token first = cursor_.current();
   cursor_.advance();
   external.name = cursor_.expectQualifiedName( "the name of a C++ type" );
   external.nameSpace = nameSpace_;
   if ( !cursor_.take( "in" ) ) {
      cursor_.abandon( "'in' and the header of the type" );
   }
   external.headerRange = cursor_.current().range;
   external.header = cursor_.expectText( "the header of the type, such as \"Room/Name.h\"" );
   cursor_.expectSemicolon();
   external.range = first.range.upTo( cursor_.last().range );
   external.documentation = cursor_.documentation( first.index, cursor_.last().index );
   module_.externals.push_back( std::move( external ) );
}

void FileParser::freeFunction()
{
   Ast::FreeFunction function;
   const Token first = cursor_.current();
   cursor_.advance();
   function.nameSpace = nameSpace_;
   function.function.kind = Ast::MemberKind::function;
   function.function.kindRange = first.range;
   members_.functionRest( function.function );
   function.function.range = first.range.upTo( cursor_.last().range );
   function.function.documentation = cursor_.documentation( first.index, cursor_.last().index );
   module_.functions.push_back( std::move( function ) );
}

/// A type with its body, nested ones included.
void FileParser::type( std::vector< Ast::Type > & into )
{
   Ast::Type type;
   const Token first = cursor_.current();
   type.kind = kindOf( cursor_.text( first ) );
   type.nameSpace = nameSpace_;
   cursor_.advance();
   type.name = cursor_.expectWord( "the name of the type" );
   try {
      typeHeader( type );
   } catch ( const Abandoned & ) {
      type.broken = true;
      type.incomplete = true;
      while ( !cursor_.atEnd() && !cursor_.isSymbol( "{" ) && !cursor_.isSymbol( "}" ) &&
            !atOuterDeclaration() ) {
         cursor_.advance();
      }
   }
   type.range = first.range.upTo( cursor_.last().range );
   const Token opening = cursor_.current();
   if ( !cursor_.isSymbol( "{" ) && !type.broken ) {
      cursor_.reportExpected( "'{' and the members of " + type.name.text );
      type.incomplete = true;
   }
   if ( cursor_.take( "{" ) || !cursor_.take( ";" ) ) {
      // In `{}` on one line the comment stands behind both braces.
      const bool empty = cursor_.isSymbol( "}" ) && !cursor_.current().startsLine;
      const std::size_t last = empty ? cursor_.current().index : opening.index;
      type.documentation = cursor_.documentation( first.index, last );
      body( type, opening.range );
   }
   into.push_back( std::move( type ) );
}

void FileParser::typeHeader( Ast::Type & type )
{
   if ( type.kind == Ast::TypeKind::enumeration ) {
      cursor_.expect( ":", "':' and the width of the enumeration" );
      type.width = cursor_.expectWord( "'u8', 'u16' or 'u32'" );
      return;
   }
   const bool takesArguments =
         type.kind == Ast::TypeKind::value || type.kind == Ast::TypeKind::entity;
   if ( takesArguments && cursor_.isSymbol( "(" ) ) {
      members_.arguments( type );
   }
   if ( type.kind == Ast::TypeKind::entity && cursor_.take( ":" ) ) {
      type.base = cursor_.expectQualifiedName( "the entity type that this one derives from" );
   }
   modifiers( type );
}

void FileParser::modifiers( Ast::Type & type )
{
   const bool value = type.kind == Ast::TypeKind::value;
   const bool entity = type.kind == Ast::TypeKind::entity;
   while ( cursor_.current().kind == TokenKind::word ) {
      const Range range = cursor_.current().range;
      const std::string word( cursor_.text( cursor_.current() ) );
      if ( value && cursor_.take( "by" ) ) {
         byHandModifiers( type, range );
      } else if ( entity && cursor_.take( "checks" ) ) {
         do {
            type.checks.push_back(
                  cursor_.expectWord( "an attribute with bounds after 'checks'" ) );
         } while ( cursor_.take( "," ) );
      } else if ( isModifier( type.kind, word ) ) {
         type.modifiers.push_back( { word, range } );
         cursor_.advance();
      } else {
         cursor_.abandon( modifiersOf( type.kind ) );
      }
   }
}

void FileParser::byHandModifiers( Ast::Type & type, Range by )
{
   if ( !cursor_.take( "hand" ) ) {
      cursor_.abandon( "'hand' after 'by'" );
   }
   do {
      constexpr std::string_view expected = "'constructors', 'text' or 'log' after 'by hand'";
      const Ast::Name what = cursor_.expectWord( expected );
      if ( what.text != "constructors" && what.text != "text" && what.text != "log" ) {
         cursor_.error( what.range, Message::expected,
               { std::string( expected ), "'" + what.text + "'" } );
         throw Abandoned();
      }
      type.modifiers.push_back( { "by hand " + what.text, by.upTo( what.range ) } );
      if ( what.text == "text" && cursor_.current().kind == TokenKind::text ) {
         type.modifiers.back().text = cursor_.expectText( "the text of the default" );
      }
   } while ( cursor_.take( "," ) );
}

bool FileParser::atOuterDeclaration() const
{
   return cursor_.current().startsLine && cursor_.ahead().kind == TokenKind::word &&
         cursor_.isWord(
               { "namespace", "constants", "value", "entity", "extern", "module", "use" } );
}

void FileParser::body( Ast::Type & type, Range opening )
{
   while ( !cursor_.atEnd() && !cursor_.isSymbol( "}" ) && !atOuterDeclaration() ) {
      if ( type.kind == Ast::TypeKind::enumeration ) {
         enumerator( type );
      } else if ( cursor_.isWord( { "enum" } ) ) {
         const std::size_t first = cursor_.current().index;
         try {
            this->type( type.enums );
         } catch ( const Abandoned & ) {
            type.incomplete = true;
            cursor_.recover( first );
            cursor_.documentation( first, cursor_.last().index );
         }
      } else {
         members_.member( type );
      }
   }
   closingBrace( opening, type.name.text );
}

void FileParser::enumerator( Ast::Type & type )
{
   const Token first = cursor_.current();
   Ast::Enumerator enumerator;
   try {
      enumerator.name = cursor_.expectWord( "an enumerator, such as 'none = 0;'" );
      cursor_.expect( "=", "'=' and the code of the enumerator" );
      enumerator.codeRange = cursor_.current().range;
      enumerator.code = cursor_.expectInteger( "the code of the enumerator" );
      cursor_.expectSemicolon();
      enumerator.range = first.range.upTo( cursor_.last().range );
      enumerator.documentation = cursor_.documentation( first.index, cursor_.last().index );
      type.enumerators.push_back( std::move( enumerator ) );
   } catch ( const Abandoned & ) {
      type.incomplete = true;
      cursor_.recover( first.index );
      cursor_.documentation( first.index, cursor_.last().index );
   }
}

} // namespace VokGen
