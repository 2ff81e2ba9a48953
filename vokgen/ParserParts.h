// The parser by layers: expressions, then members of types, then types and the file. Each layer is
// a class over the one below it; parse() in Parser.h is their only user.
#pragma once

#include "vokgen/TokenCursor.h"

namespace VokGen {

/// Values as they are written: defaults, bounds, constants.
class ExpressionParser {
 public:
   explicit ExpressionParser( TokenCursor & cursor ) : cursor_( cursor ) {}

   Ast::Expression expression( std::string_view what );

 private:
   Ast::Expression number( std::string_view what );
   Ast::Expression sum();
   Ast::Term term();

   TokenCursor & cursor_;
};

/// What stands between the braces of a type, and the arguments after its name.
class MemberParser {
 public:
   explicit MemberParser( TokenCursor & cursor )
         : cursor_( cursor ),
           expressions_( cursor )
   {
   }

   /// Parses one member into `type`; on an error reports, recovers, and keeps the member's name.
   void member( Ast::Type & type );
   /// Parses `( … )` after the name of a value or an entity.
   void arguments( Ast::Type & type );
   /// Parses a function from its name on, up to the semicolon.
   void functionRest( Ast::Member & function );

 private:
   void memberBody( Ast::Member & member );
   void attribute( Ast::Member & member );
   void attributeKind( Ast::Member & member );
   void attributeType( Ast::Member & member );
   void constant( Ast::Member & member );
   void flag( Ast::Member & member );
   void function( Ast::Member & member );
   void constructor( Ast::Member & member );
   void parameters( Ast::Member & member );
   void options( Ast::Member & member );
   bool option( Ast::Option & option );
   void bounds( Ast::Option & option );
   void argument( Ast::Member & member );
   void argumentEnd( Ast::Member & member );

   TokenCursor & cursor_;
   ExpressionParser expressions_;
};

/// Types, and what stands beside them in a file.
class FileParser {
 public:
   FileParser( const SourceFile & file, Diagnostics & diagnostics )
         : cursor_( file, diagnostics ),
           members_( cursor_ )
   {
      module_.file = &file;
   }

   Ast::Module parse();

 private:
   void moduleHeader();
   void declarations( std::size_t depth );
   void declaration( std::size_t depth );
   void nameSpace( std::size_t depth );
   void external();
   void freeFunction();
   void type( std::vector< Ast::Type > & into );
   void typeHeader( Ast::Type & type );
   void modifiers( Ast::Type & type );
   void byHandModifiers( Ast::Type & type, Range by );
   void body( Ast::Type & type, Range opening );
   void enumerator( Ast::Type & type );
   void closingBrace( Range opening, const std::string & what );
   bool atOuterDeclaration() const;

   TokenCursor cursor_;
   MemberParser members_;
   Ast::Module module_;
   std::string nameSpace_;
   bool endReported_ = false;
};

} // namespace VokGen
