// Random changes of a tree of the test module. Two draws never stand in one list of call arguments,
// whose order is the compiler's: a seed means the same changes everywhere.
#include "tests/model/RandomTree.h"

#include <vector>

namespace TestSupport {

using namespace Test;

void RandomTree::changes( std::size_t count )
{
   for ( std::size_t i = 0; i != count; ++i ) {
      change();
   }
}

void RandomTree::change()
{
   switch ( random_.below( 10 ) ) {
   case 0:
      return changeScalar();
   case 1:
      return changeValue();
   case 2:
      return changeOptional();
   case 3:
      return changeMap();
   case 4:
      return changeOrdered();
   case 5:
      return changeSet();
   case 6:
   case 7:
      return changeChildren();
   case 8:
      return changeSingles();
   default:
      return changeReferences();
   }
}

Corvo::String RandomTree::name()
{
   return Corvo::String( std::string( 1, static_cast< char >( 'a' + random_.below( 6 ) ) ) );
}

Corvo::String RandomTree::text()
{
   std::string text;
   for ( std::uint32_t size = random_.below( 24 ); size != 0; --size ) {
      text += static_cast< char >( random_.below( 256 ) );
   }
   return Corvo::String( text );
}

Test::Colour RandomTree::colour()
{
   constexpr Test::Colour colours[] = { Test::Colour::red, Test::Colour::green,
      Test::Colour::blue };
   return colours[ random_.below( 3 ) ];
}

Test::Narrow RandomTree::narrow()
{
   return Test::Narrow( 300 + random_.below( 5 ) );
}

Test::Pair RandomTree::pair()
{
   return Test::Pair{ random_.below( 6 ), text(), colour(), Test::Level( 1 + random_.below( 10 ) ),
      random_.oneIn( 2 ), Vok::Seconds( random_.below( 3 ) / 4.0 ) };
}

void RandomTree::changeScalar()
{
   switch ( random_.below( 8 ) ) {
   case 0:
      return root_.enabledIs( random_.oneIn( 2 ) );
   case 1:
      return root_.tinyIs( static_cast< std::uint8_t >( 1 + random_.below( 8 ) ) );
   case 2:
      root_.countInc( random_.below( 3 ) );
      return;
   case 3:
      return root_.bigIs( random_.word() );
   case 4:
      return root_.ratioIs( random_.below( 4 ) / 8.0 );
   case 5:
      return root_.titleIs( text() );
   case 6:
      return root_.colourIs( colour() );
   default:
      return root_.hugeIs( random_.oneIn( 2 ) ? Test::Huge::hugeTop : Test::Huge::hugeNone );
   }
}

void RandomTree::changeValue()
{
   switch ( random_.below( 7 ) ) {
   case 0:
      return root_.levelIs( Test::Level( 1 + random_.below( 10 ) ) );
   case 1:
      return root_.borrowedIs( narrow() );
   case 2:
      return root_.pairIs( pair() );
   case 3: {
      const std::uint32_t drawn = random_.below( 8 );
      return root_.paint( ( drawn & 1 ) != 0, ( drawn & 2 ) != 0, ( drawn & 4 ) != 0 );
   }
   case 4:
      return root_.endIs(
            random_.oneIn( 2 ) ? Corvo::Duration::infinity() : Corvo::Duration( 2.5 ) );
   case 5:
      return root_.addressIs( Test::Address( random_.oneIn( 2 ) ? "1-2" : "3-4" ) );
   default: {
      Test::Recipe recipe( narrow() );
      for ( std::uint32_t i = random_.below( 3 ); i != 0; --i ) {
         const std::uint32_t step = random_.below( 9 );
         recipe.stepIs( step, pair() );
      }
      return root_.recipeIs( recipe );
   }
   }
}

void RandomTree::changeOptional()
{
   const bool some = random_.oneIn( 2 );
   switch ( random_.below( 5 ) ) {
   case 0:
      return root_.maybeIs(
            some ? Vok::Optional< Test::Level >( Test::Level( 4 ) ) : std::nullopt );
   case 1:
      return root_.maybeIntIs(
            some ? Vok::Optional< std::uint32_t >( random_.below( 3 ) ) : std::nullopt );
   case 2:
      return root_.maybeBitIs( some ? Vok::Optional< bool >( random_.oneIn( 2 ) ) : std::nullopt );
   case 3:
      return root_.maybeWordIs(
            some ? Vok::Optional< Test::Full >( Test::Full( static_cast< std::uint16_t >( 7 ) ) )
                 : std::nullopt );
   default:
      return root_.maybePairIs( some ? Vok::Optional< Test::Pair >( pair() ) : std::nullopt );
   }
}

void RandomTree::changeMap()
{
   const std::uint32_t key = random_.below( 40 );
   switch ( random_.below( 8 ) ) {
   case 0:
   case 1:
      return root_.namesIs( key, text() );
   case 2:
      root_.namesDel( key );
      return;
   case 3: {
      const Corvo::String named = name();
      return root_.byNameIs( named, pair() );
   }
   case 4:
      root_.byNameDel( name() );
      return;
   case 5:
      return root_.plainsIs(
            Test::Plain{ colour(), random_.word(), static_cast< std::uint8_t >( key ), 0.25 } );
   case 6: {
      Test::Recipe recipe( narrow() );
      recipe.stepIs( key, pair() );
      return root_.recipesIs( recipe );
   }
   default:
      if ( random_.oneIn( 8 ) ) {
         root_.namesDelAll();
      }
      root_.plainsDel( colour() );
      root_.recipesDel( narrow() );
   }
}

void RandomTree::changeOrdered()
{
   const std::uint32_t key = random_.below( 40 );
   switch ( random_.below( 5 ) ) {
   case 0:
      return root_.sortedIs( pair() );
   case 1:
      root_.sortedDel( random_.below( 6 ) );
      return;
   case 2:
   case 3:
      return root_.stepsIs( key, random_.below( 5 ) );
   default:
      if ( random_.oneIn( 8 ) ) {
         root_.stepsDelAll();
      }
      root_.stepsDel( key );
   }
}

void RandomTree::changeSet()
{
   switch ( random_.below( 6 ) ) {
   case 0:
      return root_.coloursIs( colour() );
   case 1:
      return root_.coloursDel( colour() );
   case 2:
      return root_.wordsIs( name() );
   case 3:
      return root_.wordsDel( name() );
   case 4:
      return root_.marksIs( random_.below( 20 ) );
   default:
      return root_.marksDel( random_.below( 20 ) );
   }
}

void RandomTree::changeGroup( Test::Group & group )
{
   if ( random_.oneIn( 2 ) ) {
      group.seenIs( random_.oneIn( 2 ) );
   } else if ( random_.oneIn( 2 ) ) {
      group.innerDel();
   } else {
      group.innerIs()->pathIs( text() );
   }
}

// An entity below `z`, or one outside the tree. Neither refers to others: references are counted,
// and a circle of them would never go.
Corvo::Ptr< Test::Tree > RandomTree::somewhere()
{
   Corvo::Ptr< Test::Tree > at =
         random_.oneIn( 8 ) ? Test::Tree::TreeIs( name() ) : root_.treeIs( "z" );
   while ( random_.oneIn( 2 ) ) {
      at = at->kidsIs( name() );
   }
   return at;
}

void RandomTree::changeMembers( Test::Tree & tree )
{
   const std::uint32_t key = random_.below( 6 );
   switch ( random_.below( 8 ) ) {
   case 0:
   case 1:
      return tree.remarksIs( key, text() );
   case 2:
      tree.remarksDel( key );
      return;
   case 3:
      return tree.dotsIs( key );
   case 4:
      return tree.bestIs( key == 0 ? std::nullopt : Vok::Optional< Test::Narrow >( narrow() ) );
   case 5:
   case 6:
      return tree.linksIs( somewhere() );
   default:
      tree.linksDel( name() );
      tree.dotsDel( key );
   }
}

void RandomTree::changeTree( Test::Tree & tree )
{
   switch ( random_.below( 12 ) ) {
   case 8:
   case 9:
   case 10:
      return changeMembers( tree );
   case 0:
      return tree.depthIs( random_.below( 100 ) );
   case 1:
   case 2:
      return changeTree( *tree.kidsIs( name() ) );
   case 3:
      tree.kidsDel( name() );
      return;
   case 4:
      if ( !tree.groups( 5 ) ) {
         tree.groupsIs( name(), 5 );
      }
      return changeGroup( *tree.groups( 5 ) );
   case 5: {
      const Test::Label label( name() );
      tree.slotsIs( label, static_cast< std::uint16_t >( random_.below( 4 ) ) )
            ->colourIs( colour() );
      return;
   }
   case 6:
      return tree.hostsIs( name() )->activeIs( random_.oneIn( 2 ) );
   default:
      tree.slotsDel( Test::Label( name() ) );
      tree.hostsDelAll();
   }
}

void RandomTree::changeChildren()
{
   switch ( random_.below( 8 ) ) {
   case 0:
   case 1:
   case 2:
      return changeTree( *root_.treeIs( name() ) );
   case 3:
      root_.treeDel( random_.oneIn( 4 ) ? Corvo::String( "z" ) : name() );
      return;
   case 4: {
      const std::uint32_t seqno = random_.below( 5 );
      if ( random_.oneIn( 3 ) ) {
         root_.groupsDel( seqno );
      }
      const auto group =
            root_.groups( seqno ) ? root_.groups( seqno ) : root_.groupsIs( name(), seqno );
      return changeGroup( *group );
   }
   case 5: {
      const Test::Label label( name() );
      root_.slotsIs( label, static_cast< std::uint16_t >( random_.below( 300 ) ) );
      return;
   }
   case 6:
      root_.slotsDel( Test::Label( name() ) );
      return;
   default:
      root_.numberedIs( narrow() )->countIs( random_.below( 3 ) );
   }
}

void RandomTree::changeSingles()
{
   switch ( random_.below( 5 ) ) {
   case 0:
      root_.singleDel();
      return;
   case 1:
      root_.onlyDel();
      return;
   case 2:
      return root_.onlyIs()->pathIs( text() );
   default:
      return root_.singleIs( name() )->activeIs( random_.oneIn( 2 ) );
   }
}

// References into the tree, to what left it, and to what was never in it.
void RandomTree::changeReferences()
{
   switch ( random_.below( 7 ) ) {
   case 0:
      if ( const auto target = root_.tree( name() ) ) {
         const Test::Label label( name() );
         root_.bindingsDel( label );
         root_.bindingsIs( label, target, colour() );
      }
      return;
   case 1:
      root_.bindingsDel( Test::Label( name() ) );
      return;
   case 2:
      if ( const auto target = root_.numbered( narrow() ) ) {
         root_.refsIs( target );
      }
      return;
   case 3: {
      const auto outside = Test::Numbered::NumberedIs( narrow() );
      outside->countIs( random_.below( 3 ) );
      return root_.refsIs( outside );
   }
   case 4:
      root_.refsDel( narrow() );
      root_.numberedDel( narrow() );
      return;
   case 5:
      if ( const auto target = root_.tree( name() ) ) {
         root_.leafRefsIs( target );
      }
      return;
   default:
      root_.leafRefsDel( name() );
      if ( const auto target = root_.leafRefs( name() ) ) {
         changeTree( *root_.treeIs( target->name() ) );
      }
   }
}

} // namespace TestSupport
