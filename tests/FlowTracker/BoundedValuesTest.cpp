// Every value type of one number: bounds, default, message, and who checks it when.
#include "tests/support/NumberTable.h"

#include "FlowTracker/FlowTrackingOrreryTypes.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace FlowTracking;
using enum TestSupport::Checked;
using TestSupport::numberOps;
using TestSupport::NumberRow;

/// Type, width; lower bound, upper bound, default; who checks; whether it has an order; message.
const std::vector< NumberRow > table = {
   { "FlowTracking::SampleRate", numberOps< SampleRate >(), 32,
         { "minRate", 1 }, { "maxRate", 4294967295 }, { "", 1048576 }, always, false,
         "FlowTracking::SampleRate::value < FlowTracking::SampleRate::minRate or > "
         "FlowTracking::SampleRate::maxRate not allowed" },
   { "FlowTracking::SampleSize", numberOps< SampleSize >(), 16,
         { "minSize", 0 }, { "maxSize", 65535 }, { "defaultSize", 1024 }, never },
   { "FlowTracking::SampleLimit", numberOps< SampleLimit >(), 32,
         { "minRate", 0 }, { "maxRate", 4294967295 }, { "", 0 }, never },
   { "FlowTracking::SampleProbability", numberOps< SampleProbability >(), 8,
         { "minProbability", 0 }, { "maxProbability", 100 }, { "", 0 }, always, false,
         "FlowTracking::SampleProbability::value < "
         "FlowTracking::SampleProbability::minProbability or > "
         "FlowTracking::SampleProbability::maxProbability not allowed" },
   { "FlowTracking::PacketBufferRate", numberOps< PacketBufferRate >(), 32,
         { "", 0 }, { "", 4294967295 }, { "rateDefault", 0, 8 }, unbounded },
   { "FlowTracking::PacketBufferBurst", numberOps< PacketBufferBurst >(), 32,
         { "", 0 }, { "", 4294967295 }, { "burstDefault", 0, 8 }, unbounded },
   { "FlowTracking::InitialCopy", numberOps< InitialCopy >(), 16,
         { "minPkts", 0 }, { "maxPkts", 1023 }, { "", 0 }, always, true,
         "FlowTracking::InitialCopy::value < FlowTracking::InitialCopy::minPkts or > "
         "FlowTracking::InitialCopy::maxPkts not allowed" },
   { "FlowTracking::MirrorIntervalFixed", numberOps< MirrorIntervalFixed >(), 16,
         { "minInterval", 0 }, { "maxInterval", 10000 }, { "", 0 }, always, true,
         "FlowTracking::MirrorIntervalFixed::value < "
         "FlowTracking::MirrorIntervalFixed::minInterval or > "
         "FlowTracking::MirrorIntervalFixed::maxInterval not allowed" },
   { "FlowTracking::MirrorIntervalRandom", numberOps< MirrorIntervalRandom >(), 16,
         { "minInterval", 0 }, { "maxInterval", 4000 }, { "", 0 }, always, true,
         "FlowTracking::MirrorIntervalRandom::value < "
         "FlowTracking::MirrorIntervalRandom::minInterval or > "
         "FlowTracking::MirrorIntervalRandom::maxInterval not allowed" },
   { "FlowTracking::InactiveTimeout", numberOps< InactiveTimeout >(), 32,
         { "minTimeout", 3000 }, { "maxTimeout", 900000 }, { "", 15000 }, always, false,
         "FlowTracking::InactiveTimeout::value < FlowTracking::InactiveTimeout::minTimeout or > "
         "FlowTracking::InactiveTimeout::maxTimeout not allowed" },
   { "FlowTracking::ActiveInterval", numberOps< ActiveInterval >(), 32,
         { "", 1000 }, { "", 36000000 }, { "", 300000 }, byValidate },
   { "FlowTracking::TemplateInterval", numberOps< TemplateInterval >(), 32,
         { "minInterval", 5000 }, { "maxInterval", 3600000 }, { "", 3600000 }, always, false,
         "FlowTracking::TemplateInterval::value < FlowTracking::TemplateInterval::minInterval or "
         "> FlowTracking::TemplateInterval::maxInterval not allowed" },
   { "FlowTracking::FlowTableSize", numberOps< FlowTableSize >(), 32,
         { "minSize", 1 }, { "maxSize", 2097152 }, { "", 153600 }, always, false,
         "FlowTracking::FlowTableSize::value < FlowTracking::FlowTableSize::minSize or > "
         "FlowTracking::FlowTableSize::maxSize not allowed" },
   { "FlowTracking::DampingTimeout", numberOps< DampingTimeout >(), 16,
         { "minTimeout", 0 }, { "maxTimeout", 65535 }, { "defaultTimeout", 300 }, never },
   { "FlowTracking::IpfixMtu", numberOps< IpfixMtu >(), 16,
         { "minMtu", 512 }, { "maxMtu", 65472 }, { "", 9152 }, always, false,
         "FlowTracking::IpfixMtu::value < FlowTracking::IpfixMtu::minMtu or > "
         "FlowTracking::IpfixMtu::maxMtu not allowed" },
   { "FlowTracking::IpfixVersion", numberOps< IpfixVersion >(), 8,
         { "minVersion", 10 }, { "maxVersion", 10 }, { "", 10 }, always, false,
         "FlowTracking::IpfixVersion::value < FlowTracking::IpfixVersion::minVersion or > "
         "FlowTracking::IpfixVersion::maxVersion not allowed" },
   { "FlowTracking::FtId", numberOps< FtId >(), 32,
         { "minFtId", 0 }, { "maxFtId", 65535 }, { "", 0 }, always, false,
         "FlowTracking::FtId::value < FlowTracking::FtId::minFtId or > "
         "FlowTracking::FtId::maxFtId not allowed" },
   { "FlowTracking::GroupSeqnoOffset", numberOps< GroupSeqnoOffset >(), 8,
         { "minOffset", 0 }, { "maxOffset", 3 }, { "", 0 }, always, true,
         "FlowTracking::GroupSeqnoOffset::value < FlowTracking::GroupSeqnoOffset::minOffset or > "
         "FlowTracking::GroupSeqnoOffset::maxOffset not allowed" },
   { "FlowTracking::InstanceId", numberOps< InstanceId >(), 8,
         { "min", 0 }, { "max", 7 }, { "", 0 }, always, false,
         "FlowTracking::InstanceId::value < FlowTracking::InstanceId::min or > "
         "FlowTracking::InstanceId::max not allowed" },
   { "FlowTracking::PktDropsThreshold", numberOps< PktDropsThreshold >(), 8,
         { "min", 0 }, { "max", 99 }, { "", 50 }, always, false,
         "FlowTracking::PktDropsThreshold::value < FlowTracking::PktDropsThreshold::min or > "
         "FlowTracking::PktDropsThreshold::max not allowed" },
};

TEST( BoundedValuesTest, areAsTheTableSays )
{
   for ( const NumberRow & row : table ) {
      TestSupport::expectNumber( row );
   }
}

TEST( BoundedValuesTest, boundsAndDefaultsAreConstantExpressions )
{
   static_assert( SampleRate::minRate() == 1 && SampleRate::maxRate() == 4294967295 );
   static_assert( SampleSize::defaultSize() == 1024 && DampingTimeout::defaultTimeout() == 300 );
   static_assert( InstanceId::min() == 0 && InstanceId::max() == 7 );
   static_assert( IpfixVersion::minVersion() == IpfixVersion::maxVersion() );
   static_assert( std::is_same_v< decltype( PacketBufferRate::rateDefault() ), std::uint8_t > );
   static_assert( std::is_same_v< decltype( PacketBufferBurst::burstDefault() ), std::uint8_t > );
   static_assert( MirrorIntervalRandom::maxInterval() < MirrorIntervalFixed::maxInterval() );
}

TEST( BoundedValuesTest, numbersDoNotTurnIntoValuesByThemselves )
{
   static_assert( !std::is_convertible_v< std::uint32_t, SampleRate > );
   static_assert( !std::is_convertible_v< std::uint8_t, InstanceId > );
   EXPECT_EQ( FtId( 0 ).value(), 0U );
   EXPECT_EQ( SampleLimit( 0 ), SampleLimit() );
}

TEST( BoundedValuesTest, orderIsThatOfTheNumbers )
{
   EXPECT_LT( InitialCopy( 9 ), InitialCopy( 10 ) );
   EXPECT_LT( MirrorIntervalFixed( 255 ), MirrorIntervalFixed( 256 ) );
   EXPECT_FALSE( MirrorIntervalRandom( 4000 ) < MirrorIntervalRandom( 4000 ) );
   EXPECT_FALSE( GroupSeqnoOffset( 3 ) < GroupSeqnoOffset( 2 ) );
}

TEST( BoundedValuesTest, aThresholdOf100IsRefusedAndTheOldOneStays )
{
   PktDropsThreshold threshold( 99 );
   EXPECT_THROW( threshold.valueIs( 100 ), Corvo::RangeException );
   EXPECT_EQ( threshold.value(), 99 );
   EXPECT_NO_THROW( threshold.valueIs( 99 ) );
   EXPECT_EQ( threshold.value(), 99 );
}

} // namespace
