// What every entity has, factories, attributes that are no collections, and re-instantiation.
#include "tests/model/Everything.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

using Corvo::Ptr;
using ::Test::Bare;
using ::Test::Binding;
using ::Test::Colour;
using ::Test::Full;
using ::Test::Group;
using ::Test::Host;
using ::Test::Label;
using ::Test::Leaf;
using ::Test::Level;
using ::Test::Narrow;
using ::Test::Numbered;
using ::Test::Root;
using ::Test::Slot;
using ::Test::Special;
using ::Test::Tree;
using TestSupport::Heard;
using TestSupport::Recorder;

// ---- Every entity -----------------------------------------------------------------------------

static_assert( !std::copyable< Root > && !std::movable< Root > );
static_assert( !std::is_copy_constructible_v< Root > && !std::is_copy_assignable_v< Root > );
static_assert( !std::is_default_constructible_v< Bare > );
static_assert( std::derived_from< Root, Vok::Entity > && std::derived_from< Special, Root > );
static_assert( std::is_polymorphic_v< Vok::Entity > );
static_assert(
      std::same_as< decltype( std::declval< const Root & >().name() ), const Corvo::String & > );
static_assert( std::same_as< decltype( std::declval< const Root & >().nameString() ),
      const Corvo::String & > );
static_assert( std::same_as< decltype( std::declval< const Root & >().parent() ), Vok::Entity * > );
static_assert(
      std::same_as< decltype( std::declval< const Root & >().refCount() ), std::uint32_t > );
static_assert(
      std::same_as< decltype( std::declval< const Root & >().publisher() ), Corvo::Publisher & > );
static_assert( std::same_as< decltype( std::declval< const Root & >().typeData() ),
      const Vok::TypeData & > );

TEST( EntityTest, aNewEntityIsAloneAndAtItsDefaults )
{
   const Ptr< Root > root = Root::RootIs( "name" );
   EXPECT_EQ( root->name(), "name" );
   EXPECT_EQ( root->nameString(), "name" );
   EXPECT_EQ( root->parent(), nullptr );
   EXPECT_EQ( root->refCount(), 1U );
   EXPECT_FALSE( root->publisher().hasNotifiee() );
   EXPECT_EQ( root->typeData().name(), "Test::Root" );
   EXPECT_FALSE( root->enabled() );
   EXPECT_EQ( root->tiny(), 1 );
   EXPECT_EQ( root->big(), 18446744073709551615U );
   EXPECT_EQ( root->ratio(), 1.5 );
   EXPECT_EQ( root->title(), "none" );
   EXPECT_EQ( root->colour(), Colour::green );
   EXPECT_EQ( root->huge(), ::Test::Huge::hugeTop );
   EXPECT_EQ( root->level(), Level( 3 ) );
   EXPECT_EQ( root->lazy(), ::Test::Lazy( 300 ) );
   EXPECT_EQ( root->borrowed(), Narrow( 300 ) );
   EXPECT_EQ( root->end(), Corvo::Duration::infinity() );
   EXPECT_FALSE( root->maybe() || root->maybeInt() || root->maybeBit() || root->maybeWord() );
   EXPECT_TRUE( root->names().empty() && root->marks().empty() && root->tree().empty() );
   EXPECT_EQ( root->single(), nullptr );
   EXPECT_NE( root->only(), nullptr );
}

TEST( EntityTest, theIdentityIsTheNameUnderWhateverArgument )
{
   EXPECT_EQ( Host::HostIs( "alpha" )->name(), "alpha" );
   EXPECT_EQ( Host::HostIs( "alpha" )->hostname(), "alpha" );
   EXPECT_EQ( Slot::SlotIs( Label( "left" ), 1 )->name(), "left" );
   EXPECT_EQ( Slot::SlotIs( Label( "left" ), 1 )->label(), Label( "left" ) );
   EXPECT_EQ( Bare::BareIs()->name(), "" );
   EXPECT_EQ( Bare::BareIs()->nameString(), "" );
   EXPECT_EQ( Numbered::NumberedIs( Narrow( 300 ) )->name(), "" );
   EXPECT_EQ( Leaf::LeafIs( std::string_view( "a\0b", 3 ) )->name().size(), 3U );
}

TEST( EntityTest, factoriesTakeTheConstructorArguments )
{
   EXPECT_EQ( ::Test::rootFactory( "r" )->name(), "r" );
   EXPECT_EQ( ::Test::leafFactory( "l" )->refCount(), 1U );
   EXPECT_EQ( ::Test::bareFactory()->name(), "" );
   EXPECT_EQ( ::Test::hostFactory( "h" )->hostname(), "h" );
   EXPECT_EQ( ::Test::slotFactory( Label( "s" ), 7 )->weight(), 7 );
   EXPECT_EQ( ::Test::numberedFactory( Narrow( 256 ) )->id(), Narrow( 256 ) );
   EXPECT_EQ( ::Test::specialFactory( "s" )->typeData().name(), "Test::Special" );
   const auto tree = ::Test::treeFactory( "t" );
   const auto binding = ::Test::bindingFactory( Label( "b" ), tree, Colour::blue );
   EXPECT_EQ( binding->target(), tree );
   EXPECT_EQ( tree->refCount(), 2U );
   EXPECT_EQ( Group::GroupIs( "g", 4 )->seqno(), 4U );
   static_assert( std::same_as< decltype( binding->target() ), const Ptr< const Tree > & > );
}

TEST( EntityTest, anyEntityMayBeMadeAParent )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const Ptr< Leaf > leaf = Leaf::LeafIs( "l" );
   leaf->handleParent( root );
   EXPECT_EQ( leaf->parent(), root.get() );
   EXPECT_EQ( root->refCount(), 1U );
   leaf->handleParent( nullptr );
   EXPECT_EQ( leaf->parent(), nullptr );
}

TEST( EntityTest, attributeIdsCountFrom258WithoutTheName )
{
   static_assert( std::same_as< decltype( Root::enabledAttrId ), const Vok::AttrId > );
   static_assert( Root::levelDefaultAttrId == 258 && Root::enabledAttrId == 259 );
   static_assert( Root::instantiateAttrId == Root::pathAttrId + 2 );
   static_assert( Leaf::activeAttrId == 258 && Bare::pathAttrId == 258 );
   static_assert( Host::hostnameAttrId == 258 && Host::activeAttrId == 259 );
   static_assert( Numbered::idAttrId == 258 && Numbered::countAttrId == 259 );
   static_assert( Group::seqnoAttrId == 258 && Group::seenAttrId == 259 );
   static_assert( Special::fillAttrId == Root::instantiateAttrId + 1 );
   static_assert( Special::enabledAttrId == Root::enabledAttrId );
   EXPECT_EQ( Root::vokType().attribute( "nameString" )->id(), 154U );
}

TEST( EntityTest, instantiateMakesAFreshOneWithTheSameArguments )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->midIs( 5 );
   const Ptr< Root > fresh = root->instantiate();
   EXPECT_NE( fresh, root );
   EXPECT_EQ( fresh->name(), "r" );
   EXPECT_EQ( fresh->mid(), 0 );
   EXPECT_EQ( fresh->parent(), nullptr );
   const Ptr< Group > group = Group::GroupIs( "g", 4 );
   EXPECT_EQ( group->instantiate()->seqno(), 4U );
   const Ptr< ::Test::Request > request = ::Test::Request::RequestIs( "q" );
   request->pairIs( ::Test::Pair( 1, "a", Colour::red, Level(), true, Vok::Seconds() ) );
   EXPECT_EQ( std::as_const( *request ).instantiate()->name(), "q" );
   EXPECT_EQ( request->instantiate()->pair(), ::Test::Pair() );
}

TEST( EntityTest, aDerivedEntityIsItsBaseAndMore )
{
   const Ptr< Special > special = Special::SpecialIs( "s" );
   const Ptr< Root > base = special;
   Recorder recorder( *special );
   base->midIs( 4 );
   special->fill();
   EXPECT_EQ( special->mid(), 4 );
   EXPECT_TRUE( base->colours( Colour::red ) && base->colours( Colour::green ) );
   EXPECT_EQ( recorder.take().size(), 3U );
   EXPECT_EQ( special->typeData().base(), &Root::vokType() );
}

// ---- Attributes -------------------------------------------------------------------------------

template< auto accessor > using Given = decltype( ( std::declval< const Root & >().*accessor )() );
static_assert( std::same_as< Given< &Root::enabled >, bool > );
static_assert( std::same_as< Given< &Root::big >, std::uint64_t > );
static_assert( std::same_as< Given< &Root::ratio >, double > );
static_assert( std::same_as< Given< &Root::colour >, Colour > );
static_assert( std::same_as< Given< &Root::title >, const Corvo::String & > );
static_assert( std::same_as< Given< &Root::pair >, const ::Test::Pair & > );
static_assert( std::same_as< Given< &Root::level >, const Level & > );
static_assert( std::same_as< Given< &Root::start >, const Vok::Seconds & > );
static_assert( std::same_as< Given< &Root::recipe >, const ::Test::Recipe & > );
static_assert( std::same_as< Given< &Root::maybe >, Vok::Optional< Level > > );
static_assert( std::same_as< Given< &Root::maybeInt >, Vok::Optional< std::uint32_t > > );
static_assert( std::same_as< Given< &Root::maybeBit >, Vok::Optional< bool > > );
static_assert( std::same_as< Given< &Root::maybeWord >, Vok::Optional< Full > > );
static_assert( std::same_as< Given< &Root::total >, std::uint32_t > );
static_assert( std::same_as< Given< &Root::single >, Ptr< Leaf > > );
static_assert( std::same_as< decltype( std::declval< Root & >().titleIs( "" ) ), void > );

TEST( EntityTest, settingAnEqualValueIsSilent )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->pairIs( ::Test::Pair( 1, "a", Colour::red, Level(), true, Vok::Seconds( 1 ) ) );
   root->ratioIs( std::numeric_limits< double >::quiet_NaN() );
   root->maybeIs( Level( 2 ) );
   root->maybeBitIs( true );
   root->maybeWordIs( Full( 7 ) );
   root->namesIs( 1, "one" );
   root->treeIs( "t" );
   Recorder recorder( *root );
   root->enabledIs( false );
   root->tinyIs( 1 );
   root->titleIs( "none" );
   root->levelIs( Level( 3 ) );
   root->pairIs( ::Test::Pair( root->pair() ) );
   root->ratioIs( -std::numeric_limits< double >::quiet_NaN() );
   root->recipeIs( ::Test::Recipe() );
   root->maybeIs( Level( 2 ) );
   root->maybeIntIs( std::nullopt );
   root->maybeBitIs( true );
   root->maybeWordIs( Full( 7 ) );
   root->maybePairIs( std::nullopt );
   root->namesIs( 1, "one" );
   root->namesDel( 2 );
   root->coloursDel( Colour::red );
   root->treeIs( "t" );
   root->onlyIs();
   root->countInc( 0 );
   root->flagsIs( ::Test::Flags() );
   EXPECT_EQ( recorder.take(), Heard{} );
}

TEST( EntityTest, optionalsAreUnsetAndSet )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->maybeBitIs( false );
   EXPECT_EQ( root->maybeBit(), false );
   root->maybeBitIs( std::nullopt );
   EXPECT_EQ( root->maybeBit(), std::nullopt );
   root->maybeWordIs( Full( 65535 ) );
   EXPECT_EQ( root->maybeWord(), Full( 65535 ) );
   root->maybeWordIs( Full( 0 ) ); // stands for none
   EXPECT_EQ( root->maybeWord(), std::nullopt );
   root->maybeIntIs( 0U );
   EXPECT_EQ( root->maybeInt(), 0U );
   root->maybeIs( Level( 1 ) );
   root->maybeIs( root->maybe() );
   EXPECT_EQ( root->maybe(), Level( 1 ) );
}

TEST( EntityTest, countersWrapAtTheirWidth )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   EXPECT_EQ( root->countInc( 5 ), 5U );
   EXPECT_EQ( root->countInc( 4294967295U ), 4U );
   EXPECT_EQ( root->ticksInc( 200 ), 200 );
   EXPECT_EQ( root->ticksInc( 100 ), 44 );
   EXPECT_EQ( root->count(), 4U );
   EXPECT_EQ( root->ticks(), 44 );
}

TEST( EntityTest, aDerivedAttributeIsComputedOnEveryRead )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->midIs( 3 );
   EXPECT_EQ( root->total(), 3U );
   root->countIs( 10 );
   EXPECT_EQ( root->total(), 13U );
}

TEST( EntityTest, aBoundThatIsViolatedLeavesTheValue )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->tinyIs( 8 );
   for ( const unsigned v : { 0U, 9U, 255U } ) {
      EXPECT_THROW( root->tinyIs( static_cast< std::uint8_t >( v ) ), Corvo::RangeException );
   }
   EXPECT_EQ( root->tiny(), 8 );
}

TEST( EntityTest, argumentsMayLieInTheEntityThatChanges )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   root->titleIs( "a text that is too long to stand in place" );
   root->byNameIs( root->title(), root->pair() );
   root->titleIs( root->title() );
   root->pairIs( root->byName( root->title() ) );
   EXPECT_TRUE( root->byName().contains( "a text that is too long to stand in place" ) );
}

// ---- Re-instantiation -------------------------------------------------------------------------

template< class E > std::string whyRefused( auto && attempt )
{
   try {
      attempt();
   } catch ( const E & e ) {
      return e.what();
   }
   return "";
}

TEST( EntityTest, anotherConstantArgumentIsRefusedByNameIdAndTexts )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   const Ptr< Tree > one = root->treeIs( "one" );
   const Ptr< Tree > two = root->treeIs( "two" );
   root->groupsIs( "old", 5 );
   root->bindingsIs( Label( "b" ), one, Colour::red );
   const Ptr< Binding > kept = root->bindings( Label( "b" ) );
   EXPECT_EQ( root->bindingsIs( Label( "b" ), one, Colour::red ), kept );
   using E = Corvo::ReinstantiationException;
   EXPECT_EQ( whyRefused< E >( [ & ] { root->groupsIs( "new", 5 ); } ),
         R"(Test::Group "old" exists with another name (attribute 154): old "old", new "new")" );
   EXPECT_EQ( whyRefused< E >( [ & ] { root->bindingsIs( Label( "b" ), two, Colour::red ); } ),
         R"(Test::Binding "" exists with another target (attribute 259): old "one", new "two")" );
   EXPECT_EQ( whyRefused< E >( [ & ] { root->bindingsIs( Label( "b" ), nullptr, Colour::red ); } ),
         R"(Test::Binding "" exists with another target (attribute 259): old "one", new "")" );
   EXPECT_EQ( whyRefused< E >( [ & ] { root->bindingsIs( Label( "b" ), one, Colour::blue ); } ),
         R"(Test::Binding "" exists with another mode (attribute 260): old "red", new "blue")" );
   EXPECT_EQ( root->bindings( Label( "b" ) ), kept );
   EXPECT_EQ( kept->mode(), Colour::red );
   EXPECT_EQ( two->refCount(), 2U );
}

TEST( EntityTest, anEmptyReferenceIsRefusedByNameAndId )
{
   const Ptr< Root > root = Root::RootIs( "r" );
   using E = Corvo::NullPointerException;
   EXPECT_EQ( whyRefused< E >( [ & ] { root->refsIs( nullptr ); } ),
         "Test::Root::refs (attribute 300) takes no empty pointer" );
   EXPECT_EQ( whyRefused< E >( [ & ] { root->leafRefsIs( nullptr ); } ),
         "Test::Root::leafRefs (attribute 301) takes no empty pointer" );
   EXPECT_TRUE( root->refs().empty() );
}

} // namespace
